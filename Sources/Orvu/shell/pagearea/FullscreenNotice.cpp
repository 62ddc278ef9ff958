#include "shell/pagearea/FullscreenNotice.h"

#include "foundation/text/Translation.h"

namespace orvu {

void FullscreenNotice::begin(std::string_view host) {
    text_ = host.empty() ? std::string{phrase("This page fills the screen. Press Esc to leave.")}
                         : tr("{1} fills the screen. Press Esc to leave.", host);
    isOn_ = true;
    isAtEdge_ = false;
    show();
}

void FullscreenNotice::end() {
    isOn_ = false;
    hiding_.cancel();
    resting_.cancel();
    set(false);
}

void FullscreenNotice::pointerMoved(double y) {
    const bool atEdge = isOn_ && y < edge;
    if (atEdge == isAtEdge_) return;
    isAtEdge_ = atEdge;
    if (atEdge) {
        resting_ = loop_.after(restsFor, [this] { show(); });
    } else {
        resting_.cancel();
    }
}

void FullscreenNotice::show() {
    hiding_ = loop_.after(shownFor, [this] { set(false); });
    set(true);
}

void FullscreenNotice::set(bool shown) {
    if (isShown_ == shown) return;
    isShown_ = shown;
    changed_.emit();
}

}  // namespace orvu
