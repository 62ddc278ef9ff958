#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/view/ShelfMenu.h"
#include "shell/view/WindowControls.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <functional>
#include <memory>
#include <string>

namespace orvu {

/// The bar at the top of a window: the window's controls, back, forward and reload, and the
/// field for an address.
class TopBar : public Gtk::Box {
public:
    explicit TopBar(std::shared_ptr<BrowserStore> store);

    /// Puts the keyboard into the field, with `text` in it, selected.
    void editAddress(const std::string& text);
    /// Puts the keyboard into the field, with the active tab's address in it, selected.
    void editActiveAddress();
    /// Leaves the field and shows the page's address again. False if it wasn't being edited.
    bool endEditing();
    [[nodiscard]] bool isEditing() const;
    /// Called when the field gives the keyboard away.
    std::function<void()> onEditingEnded;

private:
    void addButton(Gtk::Button& button, const char* icon, const char* help,
                   const sigc::slot<void()>& press);
    void setHelp(Gtk::Button& button, const std::string& help);
    [[nodiscard]] std::string shownAddress(const std::shared_ptr<BrowserTab>& tab) const;
    void refresh();
    void open();
    void watchActive();

    const std::shared_ptr<BrowserStore> store_;
    WindowControls controls_;
    Gtk::Button back_;
    Gtk::Button forward_;
    Gtk::Button reload_;
    Gtk::Entry address_;
    ShelfMenuButton shelf_;
    Gtk::Label private_{"Private"};
    FrameRefresh refresh_;
    std::weak_ptr<BrowserTab> watched_;
    ScopedConnection tabChanged_;
    bool showsStop_ = false;
    /// What was typed last, and where: a tab whose load failed shows it again, to be mended.
    std::string typed_;
    std::weak_ptr<BrowserTab> typedIn_;
};

}  // namespace orvu
