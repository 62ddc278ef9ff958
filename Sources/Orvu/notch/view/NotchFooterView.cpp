#include "notch/view/NotchFooterView.h"

#include "look/view/Accessible.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/button.h>

#include <string>
#include <utility>

namespace orvu {
namespace {

constexpr int iconSize = 12;

Gtk::Button& makeChip(SiteIcons icons, const NotchFooter::Chip& chip) {
    const std::string name{chip.bang.name};
    auto& parts = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 6);
    auto& icon = *Gtk::make_managed<SiteIcon>(icons, iconSize);
    icon.set_valign(Gtk::Align::CENTER);
    icon.setHost(std::string{chip.bang.host});
    parts.append(icon);
    parts.append(*Gtk::make_managed<Gtk::Label>(name));
    auto& button = *Gtk::make_managed<Gtk::Button>();
    button.add_css_class("notch-chip");
    button.set_focus_on_click(false);
    button.set_child(parts);
    button.set_tooltip_text(chip.help);
    setAccessibleLabel(button, name);
    return button;
}

}  // namespace

NotchFooterView::NotchFooterView(SiteIcons icons, Chosen chosen)
    : icons_(icons), chosen_(std::move(chosen)) {
    add_css_class("notch-footer");
    append(chips_);
    note_.add_css_class("notch-note");
    note_.set_hexpand(true);
    note_.set_halign(Gtk::Align::END);
    append(note_);
    set_visible(false);
}

void NotchFooterView::show(const std::optional<NotchFooter>& footer) {
    set_visible(footer.has_value());
    if (!footer) return;
    if (footer == shown_) return;
    shown_ = *footer;
    makeChips();
    note_.set_text(shown_.note);
}

void NotchFooterView::makeChips() {
    while (Gtk::Widget* const chip = chips_.get_first_child()) chips_.remove(*chip);
    for (const auto& chip : shown_.chips) {
        auto& button = makeChip(icons_, chip);
        button.signal_clicked().connect([this, chip] { chosen_(chip); });
        chips_.append(button);
    }
}

}  // namespace orvu
