#include "shell/siteinfo/view/CaptureDot.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "site/permissions/CaptureSign.h"

#include <algorithm>

namespace orvu {

CaptureDot::CaptureDot() {
    add_css_class("capture-dot");
    mark_.add_css_class("capture-mark");
    mark_.set_halign(Gtk::Align::CENTER);
    mark_.set_valign(Gtk::Align::CENTER);
    hideFromAccessibility(mark_);
    set_child(mark_);
    set_focus_on_click(false);
    set_hexpand(false);
    set_valign(Gtk::Align::CENTER);
    set_visible(false);
    signal_clicked().connect(sigc::mem_fun(*this, &CaptureDot::stop));
}

void CaptureDot::watch(const BrowserStore::TabList& tabs) {
    if (isAbout(tabs)) return;
    watched_.clear();
    for (const auto& tab : tabs) {
        watched_.push_back({tab, tab->connectChanged(sigc::mem_fun(*this, &CaptureDot::refresh))});
    }
    refresh();
}

bool CaptureDot::isAbout(const BrowserStore::TabList& tabs) const {
    return std::ranges::equal(watched_, tabs, {},
                              [](const Watched& each) { return each.tab.lock(); });
}

/// At once and not with the next frame: what isn't shown has none.
void CaptureDot::refresh() {
    ActiveCapture capture;
    for (const Watched& each : watched_) {
        if (const auto tab = each.tab.lock()) capture = capture | tab->activeCapture();
    }
    if (capture == shown_) return;
    shown_ = capture;
    const bool keyboardGoes = !capture.any() && holdsKeyboard(*this);
    if (capture.any()) {
        const CaptureSign sign = CaptureSign::of(capture);
        setAccessibleLabel(*this, sign.name);
        set_tooltip_text(sign.help);
    }
    set_visible(capture.any());
    if (auto* const parent = get_parent()) setCssClass(*parent, "captures", capture.any());
    if (keyboardGoes) keyboardFree_.emit();
}

void CaptureDot::stop() {
    BrowserStore::TabList tabs;  // what is watched may change meanwhile
    for (const Watched& each : watched_) {
        if (auto tab = each.tab.lock()) tabs.push_back(std::move(tab));
    }
    for (const auto& tab : tabs) tab->stopCapture();
}

}  // namespace orvu
