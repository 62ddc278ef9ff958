#pragma once

#include "look/drawing/view/DottedPaperView.h"

namespace orvu {

/// The desk that a window's parts lie on: dotted paper in the colour of the window's profile, or
/// dark in a private window.
class BrowserFrame : public DottedPaperView {
public:
    static constexpr Color privateGround{22, 20, 31};
    static constexpr Paint dots{Desk::ink, 0.09};
    static constexpr Paint privateDots{Desk::white, 0.06};

    /// The desk of a private window.
    BrowserFrame() : BrowserFrame(privateDots, privateGround) {}
    /// `tint` is the pale colour of the profile.
    explicit BrowserFrame(Color tint) : BrowserFrame(dots, tint) {}

private:
    BrowserFrame(Paint ofDots, Color ground) : DottedPaperView(ofDots) {
        setGround(ground);
        add_css_class("desk");
        set_overflow(Gtk::Overflow::HIDDEN);
    }
};

}  // namespace orvu
