#pragma once

#include "shell/BrowserView.h"
#include "shell/pagearea/PageNotice.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <memory>
#include <optional>

namespace orvu {

/// The line over a page's foot when a load brought nothing. It leaves the keyboard where it is.
/// What hands something out takes a moment until it can be pressed: a page must not put the line
/// under a click that is on its way.
class PageNoticeView : public Gtk::Box {
public:
    /// `view` must outlive this.
    explicit PageNoticeView(BrowserView& view);
    ~PageNoticeView() override { notify_callbacks(); }

    /// Shows what is to be said of the page of `tab` now; `tab` may be nothing.
    void show(const std::shared_ptr<BrowserTab>& tab);

    /// Calls `slot` when the line that had the keyboard has gone.
    sigc::connection connectKeyboardFree(const sigc::slot<void()>& slot) {
        return keyboardFree_.connect(slot);
    }

private:
    void draw();
    void hide();
    void addButton(const PageNotice::Button& button);
    void perform(PageNotice::Action action);
    [[nodiscard]] std::optional<std::string> programFor(const LoadFailure& failure);

    BrowserView& view_;
    std::weak_ptr<BrowserTab> tab_;
    std::optional<LoadFailure> failure_;  ///< that is shown
    std::optional<PageNotice> shown_;
    PageNotice::Explained explained_ = PageNotice::Explained::no;
    Gtk::Label text_;
    Gtk::Box buttons_;
    Gtk::Button close_;
    Gtk::Image cross_;
    sigc::signal<void()> keyboardFree_;
    sigc::connection arming_;  ///< makes what hands something out sensitive
};

}  // namespace orvu
