#include "site/downloads/view/DownloadsButton.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"
#include "look/view/Tooltips.h"
#include "site/downloads/DownloadDisplay.h"

namespace orvu {
namespace {

constexpr Phrase help = phrase("Downloads");
constexpr int arrowSize = 13;

}  // namespace

DownloadsButton::DownloadsButton(DownloadStore& store)
    : store_(store), list_(store), refresh_(*this, [this] { refresh(); }) {
    add_css_class("chrome-button");
    set_valign(Gtk::Align::CENTER);
    set_focus_on_click(false);
    set_tooltip_text(help.c_str());
    setAccessibleLabel(*this, help);
    setSymbol(arrow_, "arrow.down", arrowSize);
    hideFromAccessibility(face_);
    face_.add(arrow_);
    face_.add(ring_);
    set_child(face_);
    signal_clicked().connect(sigc::mem_fun(*this, &DownloadsButton::open));
    list_.set_halign(Gtk::Align::END);
    list_.set_parent(*this);
    hideTooltipWhileOpen(*this, list_);
    list_.signal_closed().connect(sigc::mem_fun(*this, &DownloadsButton::closed));
    store_.connectChanged(sigc::mem_fun(*this, &DownloadsButton::changed));
    refresh();
}

DownloadsButton::~DownloadsButton() {
    notify_callbacks();
    list_.unparent();
}

void DownloadsButton::open() {
    setAccessibleExpanded(*this, true);
    list_.open();
}

void DownloadsButton::closed() { setAccessibleExpanded(*this, false); }

void DownloadsButton::changed() {
    if (get_mapped()) return refresh_.mark();
    refresh();  // what can't be seen has no frames
}

void DownloadsButton::refresh() {
    const auto running = store_.running();
    if (running) ring_.setFraction(DownloadDisplay::ringFraction(*running));
    face_.set_visible_child(running ? static_cast<Gtk::Widget&>(ring_) : arrow_);
    const bool shown = !store_.items().empty();
    if (!shown) list_.popdown();
    list_.refresh();
    if (get_visible() == shown) return;
    set_visible(shown);
}

}  // namespace orvu
