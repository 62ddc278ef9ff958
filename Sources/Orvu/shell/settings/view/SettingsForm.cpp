#include "shell/settings/view/SettingsForm.h"

#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/Keyboard.h"
#include "shell/settings/view/SettingsRows.h"

#include <gtkmm/label.h>

#include <algorithm>
#include <vector>

namespace orvu {
namespace {

std::vector<Gtk::Widget*> childrenOf(Gtk::Box& box) {
    std::vector<Gtk::Widget*> children;
    for (auto* child = box.get_first_child(); child; child = child->get_next_sibling()) {
        children.push_back(child);
    }
    return children;
}

/// The child that has the keyboard; null if none has.
const Gtk::Widget* childWithKeyboard(Gtk::Box& box) {
    const auto children = childrenOf(box);
    const auto found = std::ranges::find_if(
        children, [](const Gtk::Widget* child) { return holdsKeyboard(*child); });
    return found != children.end() ? *found : nullptr;
}

}  // namespace

SettingsForm::SettingsForm(SettingsView& settings)
    : Gtk::Box(Gtk::Orientation::VERTICAL), settings_(settings) {
    add_css_class("settings-sections");
    settings_.connectChanged(sigc::mem_fun(*this, &SettingsForm::refresh));
    refresh();
}

void SettingsForm::refresh() {
    for (const auto& section : settings_.sections()) show(section);
}

void SettingsForm::show(const SettingsView::Section& section) {
    Card& shown = card(section);
    const Gtk::Widget* const hadKeyboard = childWithKeyboard(*shown.box);
    std::map<std::string, Gtk::Widget*> rows;
    std::vector<Gtk::Widget*> order;
    for (const auto& row : section.rows) {
        std::string key = settingsRowKey(row);
        // Two rows that say the same are told apart by their number.
        while (rows.contains(key)) key += "+";
        const auto known = shown.rows.find(key);
        order.push_back(known != shown.rows.end() ? known->second : &makeSettingsRow(row));
        rows.emplace(std::move(key), order.back());
    }
    // Where the row with the keyboard goes, the one that comes to stand in its place has it.
    const auto before = childrenOf(*shown.box);
    const auto place = std::ranges::find(before, hadKeyboard) - before.begin();
    shown.rows = std::move(rows);
    setChildren(*shown.box, order);
    const bool isGone = hadKeyboard && std::ranges::find(order, hadKeyboard) == order.end();
    if (isGone && static_cast<std::size_t>(place) < order.size()) {
        order[static_cast<std::size_t>(place)]->child_focus(Gtk::DirectionType::TAB_FORWARD);
    }
}

SettingsForm::Card& SettingsForm::card(const SettingsView::Section& section) {
    Card& card = cards_[section.title];
    if (card.box) return card;
    auto& heading = *Gtk::make_managed<Gtk::Label>(std::string{section.title});
    heading.add_css_class("settings-heading");
    heading.set_xalign(0);
    append(heading);
    card.box = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    card.box->add_css_class("settings-section");
    card.box->property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(*card.box, std::string{section.title});
    append(*card.box);
    return card;
}

}  // namespace orvu
