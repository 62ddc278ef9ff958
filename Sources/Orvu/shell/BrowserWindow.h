#pragma once

#include "core/BrowserStore.h"
#include "platform/EditingCommand.h"
#include "shell/WindowPlacement.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// One window on the screen, as the window controller needs it.
class BrowserWindow {
public:
    virtual ~BrowserWindow() = default;

    /// Shows this store from now on, in the frame that the window has.
    virtual void setContent(const std::shared_ptr<BrowserStore>& store) = 0;
    /// Whether it stands on the desktop. A minimised one does: its person sees it in the list of
    /// tasks, and it comes back when it is presented.
    [[nodiscard]] virtual bool isVisible() const = 0;
    /// Whether it has the keyboard.
    [[nodiscard]] virtual bool isKey() const = 0;
    /// Where its top left corner is; nothing where the desktop doesn't tell.
    [[nodiscard]] virtual std::optional<Point> topLeft() const = 0;
    /// Moves it, once it is shown, where the desktop lets windows place themselves.
    virtual void placeAt(Point topLeft) = 0;
    /// Takes the size that is stored and keeps it stored from now on.
    virtual void rememberFrame() = 0;
    /// Brings it to the front with the keyboard.
    virtual void present() = 0;

    // What the commands of the same names do.
    virtual void performClose() = 0;
    virtual void performMiniaturize() = 0;
    /// Fills the screen's free area with the window, or gives it its own size back.
    virtual void performZoom() = 0;
    virtual void toggleFullScreen() = 0;
    /// Opens an address in a private window of its own.
    virtual void openPrivately(const Url& url) = 0;
    /// Edits where the keyboard is, in a page or in a text field.
    virtual void edit(EditingCommand command) = 0;
};

/// What is fixed when a window is made.
struct BrowserWindowTraits {
    bool isPrivate = false;
    /// For the desktop's lists of windows; never seen in the window itself.
    std::string_view title;
};

/// Makes the windows; `closed` is to be called once, when the window closed.
using BrowserWindowFactory = std::function<std::unique_ptr<BrowserWindow>(
    const BrowserWindowTraits& traits, std::function<void()> closed)>;

}  // namespace orvu
