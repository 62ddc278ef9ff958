#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/view/ActiveTabWatch.h"

#include <gtkmm/entry.h>

#include <functional>
#include <memory>
#include <string>

namespace orvu {

/// The field that shows the address of the tab in front and takes a new one.
class AddressField : public Gtk::Entry {
public:
    explicit AddressField(std::shared_ptr<BrowserStore> store);

    /// Takes the keyboard, with `text` in it, selected.
    void edit(const std::string& text);
    /// Gives the keyboard away and shows the page's address again. False if it wasn't edited.
    bool endEditing();
    [[nodiscard]] bool isEditing() const;
    /// Called when the field gives the keyboard away.
    std::function<void()> onEditingEnded;

private:
    [[nodiscard]] std::string shownAddress(const std::shared_ptr<BrowserTab>& tab) const;
    void refresh();
    void open();

    const std::shared_ptr<BrowserStore> store_;
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    /// What was typed last, and where: a tab whose load failed shows it again, to be mended.
    std::string typed_;
    std::weak_ptr<BrowserTab> typedIn_;
};

}  // namespace orvu
