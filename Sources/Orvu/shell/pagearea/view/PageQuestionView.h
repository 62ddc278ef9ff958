#pragma once

#include "core/BrowserTab.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <memory>
#include <optional>

namespace orvu {

/// A card over a page with what the page wants. It leaves the keyboard with the
/// page. Allowing takes a moment until it can be pressed: a page must not put the card under a
/// click that is on its way.
class PageQuestionView : public Gtk::Box {
public:
    PageQuestionView();
    ~PageQuestionView() override { notify_callbacks(); }

    /// Shows the question of `tab`, if it has one; `tab` may be nothing.
    void show(const std::shared_ptr<BrowserTab>& tab);

    /// Calls `slot` when the question that had the keyboard has gone.
    sigc::connection connectKeyboardFree(const sigc::slot<void()>& slot) {
        return keyboardFree_.connect(slot);
    }

private:
    void addAnswers();
    void answer(PageAnswer answer);
    void draw(const PageQuestion& question);

    std::weak_ptr<BrowserTab> tab_;
    std::optional<PageQuestion> shown_;
    Gtk::Box line_;
    Gtk::Image symbol_;
    Gtk::Label text_;
    Gtk::Box answers_;
    Gtk::Button refuse_;
    Gtk::Button allow_;
    sigc::signal<void()> keyboardFree_;
    sigc::connection arming_;  ///< makes `allow_` sensitive
};

}  // namespace orvu
