#pragma once

#include "core/BrowserTab.h"
#include "foundation/Signal.h"
#include "look/layout/view/MaximumWidth.h"
#include "look/view/FrameRefresh.h"
#include "shell/pagearea/PageDialogText.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>

namespace orvu {

/// What a page asks the person, on a card that stands over the whole page and dims it. The page gets
/// neither keys nor clicks meanwhile. What can't be taken back takes a moment until it can be
/// pressed: a page must not put the card under a key that is on its way.
class PageDialogView : public Gtk::Box {
public:
    /// `over` is what this will stand in, which is there while this isn't. It must outlive this.
    explicit PageDialogView(Gtk::Widget& over);
    ~PageDialogView() override { notify_callbacks(); }

    /// Shows what the page of `tab` asks, if it asks; `tab` may be nothing.
    void show(const std::shared_ptr<BrowserTab>& tab);
    [[nodiscard]] bool isShown() const { return shown_ != 0; }
    /// Gives the keyboard to the field or the button that it would begin with.
    void focusCard();

    /// Calls `slot` when it came or went.
    sigc::connection connectShown(const sigc::slot<void()>& slot) { return changed_.connect(slot); }

private:
    void addHeading();
    void addMessage();
    void addFields();
    void addAnswers();
    void refresh();
    void draw(const PageDialogs::Shown& asked);
    void drawFields(const PageDialog& dialog);
    void arm();
    bool keyPressed(guint key, guint code, Gdk::ModifierType state);
    void scroll(double pages);
    void accept();
    void cancel();
    void answer(const PageDialogAnswer& answer);
    void silence();

    std::weak_ptr<BrowserTab> tab_;
    bool isOtherTab_ = false;    ///< than the one whose dialog was drawn last
    PageDialogs::Id shown_ = 0;  ///< 0 for none
    bool isCancelDefault_ = false;
    Gtk::Box card_;
    MaximumWidth place_;
    Gtk::Box heading_;
    Gtk::Image symbol_;
    Gtk::Label asker_;
    Gtk::Label caption_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Label message_;
    Gtk::Label warning_;
    Gtk::Entry field_;  ///< the answer to a prompt, or a name
    Gtk::Entry password_;
    Gtk::Box answers_;
    Gtk::Button silence_;
    Gtk::Button cancel_;
    Gtk::Button accept_;
    FrameRefresh refresh_;
    ScopedConnection dialogsChanged_;
    sigc::connection arming_;  ///< makes `accept_` sensitive
    sigc::signal<void()> changed_;
};

}  // namespace orvu
