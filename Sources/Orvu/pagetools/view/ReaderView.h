#pragma once

#include "look/motion/view/SpringAnimation.h"
#include "pagetools/Reader.h"
#include "pagetools/view/ReaderControls.h"
#include "pagetools/view/ReaderTextView.h"

#include <gtkmm/overlay.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <memory>

namespace orvu {

/// An article in place of its page. It comes and goes with a fade.
class ReaderView : public Gtk::Overlay {
public:
    /// `look` must outlive the view. `close` is asked for the end of the reader.
    ReaderView(std::shared_ptr<const ReaderArticle> article, ReaderLook& look,
               std::function<void()> close);

    [[nodiscard]] const ReaderArticle* article() const { return article_.get(); }
    void focusText() { text_.grab_focus(); }
    /// Selects the next match of a text and brings it into sight. Whether there is one.
    bool find(const std::string& text, FindConfiguration how) { return text_.find(text, how); }
    /// Fades out and takes no clicks any more; then calls `gone`, which must not end the view.
    void leave(std::function<void()> gone);

    /// Calls `slot` when the keyboard comes to the reader.
    sigc::connection connectFocused(const sigc::slot<void()>& slot) {
        return focused_.connect(slot);
    }

private:
    void addKeys();
    bool keyPressed(guint key, guint keycode, Gdk::ModifierType state);
    void refresh();
    void fade(double shown);

    const std::shared_ptr<const ReaderArticle> article_;
    ReaderLook& look_;
    ReaderTextView text_;
    Gtk::ScrolledWindow scroll_;
    ReaderControls controls_;
    std::function<void()> gone_;
    sigc::signal<void()> focused_;
    SpringAnimation fade_;
};

}  // namespace orvu
