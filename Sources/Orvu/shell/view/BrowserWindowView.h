#pragma once

#include "shell/BrowserWindowController.h"
#include "shell/menus/WindowCommands.h"
#include "shell/view/BrowserWindowContent.h"

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// A browser window: the top bar, the list of tabs and the page.
class BrowserWindowView : public BrowserWindow, public WindowCommandTarget, public sigc::trackable {
public:
    /// `services` and `windows`, to which it belongs, must outlive the window.
    BrowserWindowView(Gtk::Application& application, AppServices& services,
                      BrowserWindowController& windows, const BrowserWindowTraits& traits,
                      std::function<void()> closed);
    ~BrowserWindowView() override;

    void setContent(const std::shared_ptr<BrowserStore>& store) override;
    [[nodiscard]] bool isVisible() const override;
    [[nodiscard]] bool isKey() const override;
    [[nodiscard]] std::optional<Point> topLeft() const override;
    void placeAt(Point topLeft) override { place_ = topLeft; }
    void rememberFrame() override;
    void present() override;

    [[nodiscard]] BrowserStore& store() override { return *store_; }
    void editAddress(const std::string& text) override;
    bool endEditing() override;
    void focusNextArea() override { moveFocus(+1); }
    void focusPreviousArea() override { moveFocus(-1); }
    void switchProfile(const Profile& profile) override;
    void openFind() override { content_->openFind(); }
    void findAgain(bool backwards) override { content_->findAgain(backwards); }
    void openRewind() override { content_->openRewind(); }
    [[nodiscard]] Pasteboard& pasteboard() override { return services_.platform().pasteboard; }
    [[nodiscard]] Workspace& workspace() override { return services_.platform().workspace; }

private:
    void addCommands();
    void addWindowActions();
    void addShortcut(const std::string& keys, const std::string& action);
    void moveFocus(int areas);
    void saveFrame();
    void frameChanged();
    bool closeRequested();

    AppServices& services_;
    BrowserWindowController& windows_;
    const std::function<void()> closed_;
    Gtk::ApplicationWindow window_;
    Gtk::Box invisibleTitlebar_;
    NarrowColumn narrow_;
    std::shared_ptr<BrowserStore> store_;
    std::unique_ptr<BrowserWindowContent> content_;
    std::optional<Point> place_;
    Scheduled savesFrame_;
    Scheduled closes_;
    bool remembersFrame_ = false;
};

}  // namespace orvu
