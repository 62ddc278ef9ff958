#include "shell/column/view/PinnedTiles.h"

#include "look/view/Accessible.h"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/root.h>

#include <algorithm>

namespace orvu {

PinnedTiles::PinnedTiles(BrowserStore& store, ContextMenu& menu) : store_(store), menu_(menu) {
    add_css_class("pinned-tiles");
    property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(*this, "Pinned tabs");
    addControllers();
    update();
}

PinnedTiles::~PinnedTiles() {
    for (const auto& [id, tile] : tiles_) tile->unparent();
}

BrowserPinnedTile* PinnedTiles::update() {
    const auto pinned = store_.pinned();
    std::vector<Uuid> order(pinned.size());
    std::ranges::transform(pinned, order.begin(), [](const auto& tab) { return tab->id(); });
    auto* const focus = get_root() ? tileOf(get_root()->get_focus()) : nullptr;
    std::ptrdiff_t focusPlace = -1;  // of a focused tile that goes
    std::erase_if(tiles_, [&](const auto& entry) {
        if (std::ranges::find(order, entry.first) != order.end()) return false;
        if (entry.second.get() == focus) {
            focusPlace = std::ranges::find(order_, entry.first) - order_.begin();
        }
        entry.second->unparent();
        return true;
    });
    for (const auto& tab : pinned) tile(tab);
    if (order != order_) queue_resize();
    order_ = order;
    if (focusPlace >= 0 && !order_.empty()) {
        const auto next = std::min(focusPlace, std::ssize(order_) - 1);
        tiles_.at(order_[static_cast<std::size_t>(next)])->grab_focus();
    }

    if (active_ == store_.activeID()) return nullptr;
    const auto found = [&] { return active_ ? tiles_.find(*active_) : tiles_.end(); };
    if (const auto previous = found(); previous != tiles_.end()) previous->second->setActive(false);
    active_ = store_.activeID();
    const auto present = found();
    if (present == tiles_.end()) return nullptr;
    present->second->setActive(true);
    return present->second.get();
}

BrowserPinnedTile& PinnedTiles::tile(const std::shared_ptr<BrowserTab>& tab) {
    auto& tile = tiles_[tab->id()];
    if (!tile) {
        tile = std::make_unique<BrowserPinnedTile>(store_, tab);
        tile->set_parent(*this);
        tile->setActive(active_ == tab->id());
    }
    return *tile;
}

void PinnedTiles::setNarrow(Narrow narrow) {
    narrow_ = narrow;
    queue_resize();
}

// --- Layout -----------------------------------------------------------------------------------

Gtk::SizeRequestMode PinnedTiles::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void PinnedTiles::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    minimum = natural = 0;
    if (orientation == Gtk::Orientation::HORIZONTAL || order_.empty()) return;
    const int rows = (static_cast<int>(order_.size()) + columns() - 1) / columns();
    minimum = natural = rows * BrowserPinnedTile::height + (rows - 1) * spacing;
}

void PinnedTiles::size_allocate_vfunc(int width, int, int) {
    const int whole = width + spacing;
    const auto left = [&](int column) { return column * whole / columns(); };
    for (std::size_t i = 0; i < order_.size(); ++i) {
        const int column = static_cast<int>(i) % columns();
        const int row = static_cast<int>(i) / columns();
        tiles_.at(order_[i])->size_allocate(
            {left(column), row * (BrowserPinnedTile::height + spacing),
             left(column + 1) - left(column) - spacing, BrowserPinnedTile::height},
            -1);
    }
}

// --- Keys and the pointer ---------------------------------------------------------------------

void PinnedTiles::addControllers() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &PinnedTiles::keyPressed), false);
    add_controller(keys);
    for (const unsigned button : {unsigned{GDK_BUTTON_MIDDLE}, unsigned{GDK_BUTTON_SECONDARY}}) {
        const auto click = Gtk::GestureClick::create();
        click->set_button(button);
        const auto pressed = sigc::mem_fun(*this, &PinnedTiles::pointerPressed);
        click->signal_pressed().connect(
            [pressed, button](int, double x, double y) { pressed(button, x, y); });
        add_controller(click);
    }
}

bool PinnedTiles::keyPressed(guint key, guint, Gdk::ModifierType modifiers) {
    auto* const tile = tileOf(get_root()->get_focus());
    if (!tile) return false;
    const bool shift = (modifiers & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
    if (key == GDK_KEY_Menu || (key == GDK_KEY_F10 && shift)) {
        menu_.show(tile->contextMenu(), *tile, {0, 0, tile->get_width(), tile->get_height()});
        return true;
    }
    if (key != GDK_KEY_Delete && key != GDK_KEY_KP_Delete) return false;
    claimsFocus_ = true;
    tile->closeTab();
    return true;
}

void PinnedTiles::pointerPressed(unsigned button, double x, double y) {
    auto* const tile = tileOf(pick(x, y));
    if (!tile) return;
    if (button == GDK_BUTTON_MIDDLE) return tile->closeTab();
    menu_.show(tile->contextMenu(), *this, {static_cast<int>(x), static_cast<int>(y), 1, 1});
}

BrowserPinnedTile* PinnedTiles::tileOf(Gtk::Widget* widget) const {
    while (widget && widget->get_parent() != this) widget = widget->get_parent();
    return dynamic_cast<BrowserPinnedTile*>(widget);
}

}  // namespace orvu
