#pragma once

#include "platform/linux/web/EditingCommands.h"
#include "platform/linux/web/ReturnedKeys.h"
#include "shell/BrowserWindowController.h"
#include "shell/view/BrowserWindowContent.h"

#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// A browser window on this desktop: its frame, its keys and its place; what lies in it shows one
/// `BrowserView`.
class BrowserWindowView : public BrowserWindow, public sigc::trackable {
public:
    /// `shared` and `windows`, to which it belongs, must outlive the window.
    BrowserWindowView(Gtk::Application& application, BrowserView::Shared shared,
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

    void performClose() override { window_.close(); }
    void performMiniaturize() override { window_.minimize(); }
    void performZoom() override;
    void toggleFullScreen() override;
    void openPrivately(const Url& url) override { windows_.openPrivately(url); }
    void edit(EditingCommand command) override;

private:
    void addCommands();
    void addShortcut(const Command& command, const std::string& keys);
    void addShortcutInFields(const Command& command, const std::string& keys);
    void addEscape();
    void noticePresses();
    void showLook();
    void holdCommands();
    void saveFrame();
    void frameChanged();
    bool closeRequested();
    void close();

    const BrowserView::Shared shared_;
    AppServices& services_;
    BrowserWindowController& windows_;
    const std::function<void()> closed_;
    Gtk::ApplicationWindow window_;
    ReturnedKeys returnedKeys_{window_};
    Gtk::Box invisibleTitlebar_;
    std::unique_ptr<BrowserView> view_;
    std::unique_ptr<BrowserWindowContent> content_;
    std::optional<Point> place_;
    Scheduled savesFrame_;
    Scheduled closes_;
    Scheduled edits_;
    bool remembersFrame_ = false;
    bool frameIsUnsaved_ = false;
};

}  // namespace orvu
