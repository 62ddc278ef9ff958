#include "shell/column/view/PinnedTiles.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"

#include <algorithm>

namespace orvu {

PinnedTiles::PinnedTiles(BrowserStore& store, ContextMenu& menu)
    : store_(store), input_(*this, menu, [this](Gtk::Widget* widget) { return tileOf(widget); }) {
    add_css_class("pinned-tiles");
    property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(*this, phrase("Pinned tabs"));
    update();
}

PinnedTiles::~PinnedTiles() {
    for (const auto& [id, tile] : tiles_) tile->unparent();
}

BrowserPinnedTile* PinnedTiles::update() {
    const auto pinned = store_.pinned();
    std::vector<Uuid> order(pinned.size());
    std::ranges::transform(pinned, order.begin(), [](const auto& tab) { return tab->id(); });
    auto* const focus = tileOf(focusOf(*this));
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
        tiles_.at(order_[static_cast<std::size_t>(next)])->takeFocus();
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

BrowserPinnedTile* PinnedTiles::tileOf(Gtk::Widget* widget) const {
    while (widget && widget->get_parent() != this) widget = widget->get_parent();
    return dynamic_cast<BrowserPinnedTile*>(widget);
}

}  // namespace orvu
