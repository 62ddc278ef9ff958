#include "platform/PageMenu.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <utility>

namespace orvu {
namespace {

using Item = PageMenuItem;
using Group = std::vector<PageMenuEntry>;

constexpr std::size_t longestSearch = 1000;  // characters
constexpr std::size_t longestTitle = 30;     // characters

/// `text` on one line: each run of blanks, line ends and control characters is one blank.
std::string onOneLine(std::string_view text) {
    std::string line;
    for (const char character : text) {
        const bool isBlank = static_cast<unsigned char>(character) <= ' ' || character == '\x7f';
        if (!isBlank) {
            line += character;
        } else if (!line.ends_with(' ')) {
            line += ' ';
        }
    }
    return std::string{trimmed(line, TrimSet::whitespacesAndNewlines)};
}

Group ofLink(const PageMenuPlace& place) {
    if (!place.isLink) return {};
    Group group;
    if (place.opensLink) {
        group = {{Item::openLink, phrase("Open in New Tab")},
                 {Item::openLinkPrivately, phrase("Open in New Private Window")}};
    }
    group.push_back({Item::copyLink, phrase("Copy Link")});
    if (place.opensLink) group.push_back({Item::saveLink, phrase("Save Link")});
    return group;
}

Group ofImage(const PageMenuPlace& place) {
    if (!place.isImage) return {};
    Group group;
    if (place.opensImage) group.push_back({Item::openImage, phrase("Open Image in New Tab")});
    group.push_back({Item::copyImage, phrase("Copy Image")});
    group.push_back({Item::saveImage, phrase("Save Image")});
    return group;
}

Group ofSelection(const PageMenuPlace& place) {
    if (!place.hasSelection) return {};
    Group group;
    if (!place.isEditable) group.push_back({Item::copy, phrase("Copy")});
    const std::string text = searchTextOf(place.selection);
    if (text.empty()) return group;
    const std::string shown{firstCharacters(text, longestTitle)};
    const std::string rest = shown.size() < text.size() ? "…" : "";
    group.push_back({Item::search, tr("Search for “{1}”", shown + rest)});
    return group;
}

Group ofPage(const PageMenuPlace& place) {
    const bool isPlain = !place.isLink && !place.isImage && !place.isMedia && !place.isEditable &&
                         !place.hasSelection;
    if (!isPlain) return {};
    return {{Item::goBack, phrase("Back"), place.canGoBack},
            {Item::goForward, phrase("Forward"), place.canGoForward},
            place.isLoading ? PageMenuEntry{Item::stopLoading, phrase("Stop")}
                            : PageMenuEntry{Item::reload, phrase("Reload")}};
}

}  // namespace

std::vector<Group> pageMenu(const PageMenuPlace& place) {
    std::vector<Group> menu;
    const auto add = [&menu](Group group) {
        if (!group.empty()) menu.push_back(std::move(group));
    };
    if (place.isEditable) add({{Item::spelling}});
    add(ofLink(place));
    add(ofImage(place));
    if (place.isMedia) add({{Item::media}});
    if (place.isEditable) {
        add({{Item::undo, phrase("Undo")}, {Item::redo, phrase("Redo")}});
        add({{Item::cut, phrase("Cut"), place.hasSelection},
             {Item::copy, phrase("Copy"), place.hasSelection},
             {Item::paste, phrase("Paste")},
             {Item::pastePlain, phrase("Paste as Plain Text")},
             {Item::erase, phrase("Delete"), place.hasSelection},
             {Item::selectAll, phrase("Select All")}});
    }
    add(ofSelection(place));
    add(ofPage(place));
    add({{Item::inspect, phrase("Inspect")}});
    return menu;
}

std::string searchTextOf(std::string_view selection) {
    return std::string{firstCharacters(onOneLine(wellFormed(selection)), longestSearch)};
}

}  // namespace orvu
