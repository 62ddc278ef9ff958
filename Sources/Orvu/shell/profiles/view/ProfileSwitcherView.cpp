#include "shell/profiles/view/ProfileSwitcherView.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"
#include "shell/profiles/view/ProfileColorRules.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

#include <array>
#include <string>
#include <utility>

namespace orvu {
namespace {

constexpr int tileSize = 32;
constexpr int spacing = 6;
constexpr int symbolSize = 14;
constexpr int plusSize = 13;
/// How many of them stand over one another before they scroll.
constexpr int mostInColumn = 6;

Gtk::Button& makeTile(std::string_view symbol, int size, const std::string& help) {
    auto& image = *Gtk::make_managed<Gtk::Image>();
    setSymbol(image, symbol, size);
    auto& button = *Gtk::make_managed<Gtk::Button>();
    button.set_child(image);
    button.add_css_class("profile-tile");
    button.set_size_request(tileSize, tileSize);
    button.set_focus_on_click(false);
    button.set_tooltip_text(help);
    setAccessibleLabel(button, help);
    return button;
}

}  // namespace

ProfileSwitcherView::ProfileSwitcherView(ProfileSwitcher& switcher, ContextMenu& menu)
    : switcher_(switcher),
      menu_(menu),
      row_(Gtk::Orientation::HORIZONTAL, spacing),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("profile-switcher");
    row_.add_css_class("profile-tiles");
    set_child(row_);
    set_propagate_natural_width(true);
    set_propagate_natural_height(true);
    nameScrollBars(*this);
    addMenuKeys();
    switcher_.profiles().connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    setNarrow(false);
    addNewProfile();
    refresh();
}

void ProfileSwitcherView::setNarrow(bool narrow) {
    row_.set_orientation(narrow ? Gtk::Orientation::VERTICAL : Gtk::Orientation::HORIZONTAL);
    set_policy(narrow ? Gtk::PolicyType::NEVER : Gtk::PolicyType::EXTERNAL,
               narrow ? Gtk::PolicyType::EXTERNAL : Gtk::PolicyType::NEVER);
    set_max_content_height(narrow ? mostInColumn * (tileSize + spacing) : -1);
    set_halign(narrow ? Gtk::Align::CENTER : Gtk::Align::START);
}

void ProfileSwitcherView::addTile(const ProfileSwitcher::Tile& tile) {
    Gtk::Button& button = makeTile(tile.symbol, symbolSize, tile.help);
    button.signal_clicked().connect([this, id = tile.id] { switcher_.switchTo(id); });
    const auto click = Gtk::GestureClick::create();
    click->set_button(GDK_BUTTON_SECONDARY);
    click->signal_pressed().connect(
        [this, id = tile.id, &button](int, double, double) { openMenu(id, button); });
    button.add_controller(click);
    auto& ring = *Gtk::make_managed<Gtk::Box>();
    ring.append(button);
    ring.add_css_class("profile-ring");
    for (Gtk::Widget* const part : std::array<Gtk::Widget*, 2>{&button, &ring}) {
        part->add_css_class(profileColorClass(tile.color));
        if (tile.isShown) part->add_css_class("shown");
    }
    if (tile.isShown) setAccessibleDescription(button, phrase("The profile of this window"));
    row_.append(ring);
    buttons_.push_back(&button);
}

void ProfileSwitcherView::addNewProfile() {
    const std::string help{ProfileSwitcher::newProfileHelp};
    Gtk::Button& button = makeTile(ProfileSwitcher::newProfileSymbol, plusSize, help);
    button.add_css_class("profile-new");
    button.signal_clicked().connect(sigc::mem_fun(switcher_, &ProfileSwitcher::create));
    row_.append(button);
}

void ProfileSwitcherView::addMenuKeys() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType state) {
            const bool isShifted = (state & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
            if (key != GDK_KEY_Menu && !(key == GDK_KEY_F10 && isShifted)) return false;
            for (std::size_t i = 0; i < tiles_.size(); ++i) {
                if (holdsKeyboard(*buttons_[i])) openMenu(tiles_[i].id, *buttons_[i]);
            }
            return true;
        },
        false);
    add_controller(keys);
}

void ProfileSwitcherView::openMenu(const Uuid& id, Gtk::Widget& tile) {
    std::vector<MenuEntry> entries;
    for (const auto& line : switcher_.menu(id)) {
        entries.push_back({.title = line.title, .run = line.run});
    }
    menu_.show(entries, tile, {0, 0, tile.get_width(), tile.get_height()});
}

void ProfileSwitcherView::refresh() {
    auto now = switcher_.tiles();
    if (now == tiles_) return;
    Gtk::Widget* const last = row_.get_last_child();
    last->reference();
    while (Gtk::Widget* const child = row_.get_first_child()) row_.remove(*child);
    buttons_.clear();
    tiles_ = std::move(now);
    for (const auto& tile : tiles_) addTile(tile);
    row_.append(*last);
    last->unreference();
}

}  // namespace orvu
