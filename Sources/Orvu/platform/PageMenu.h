#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What the menu of a page can offer.
enum class PageMenuItem {
    goBack,
    goForward,
    reload,
    stopLoading,
    openLink,
    openLinkPrivately,
    copyLink,
    saveLink,
    openImage,
    copyImage,
    saveImage,
    media,     ///< all that the engine offers for a film or a sound
    spelling,  ///< what the engine proposes for a word that it doesn't know
    undo,
    redo,
    cut,
    copy,
    paste,
    pastePlain,
    erase,
    selectAll,
    search,
    inspect,
};

/// One line of that menu.
struct PageMenuEntry {
    PageMenuItem item;
    std::string title = {};  ///< empty where the engine titles it
    bool isEnabled = true;

    friend bool operator==(const PageMenuEntry&, const PageMenuEntry&) = default;
};

/// What lies where a page's menu is asked for.
struct PageMenuPlace {
    bool isLink = false;
    bool opensLink = false;  ///< the link leads to what a page may open in a tab
    bool isImage = false;
    bool opensImage = false;
    bool isMedia = false;
    bool isEditable = false;
    bool hasSelection = false;
    std::string selection = {};  ///< its text, as far as it is known
    bool canGoBack = false;
    bool canGoForward = false;
    bool isLoading = false;
};

/// The lines of the menu there, in groups; none of them is empty.
[[nodiscard]] std::vector<std::vector<PageMenuEntry>> pageMenu(const PageMenuPlace& place);

/// What is searched for when a text of a page is: on one line, of at most 1,000 characters. Empty
/// if the text is blank.
[[nodiscard]] std::string searchTextOf(std::string_view selection);

/// Something chosen in a page's menu that is for others than the page to do.
struct PageMenuChoice {
    enum class Kind {
        openPrivately,  ///< `text` is an address of the web, for a private window
        search,         ///< `text` is to be searched for
    };
    Kind kind;
    std::string text;

    friend bool operator==(const PageMenuChoice&, const PageMenuChoice&) = default;
};

}  // namespace orvu
