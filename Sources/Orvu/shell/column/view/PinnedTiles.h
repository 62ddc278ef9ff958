#pragma once

#include "core/BrowserStore.h"
#include "shell/column/view/ColumnInput.h"
#include "shell/column/view/BrowserPinnedTile.h"

#include <gtkmm/widget.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace orvu {

/// The tiles of the pinned tabs, in columns of one width. Each keeps its widget as long as its
/// tab is pinned.
class PinnedTiles : public Gtk::Widget {
public:
    static constexpr int spacing = 6;

    /// `store` and `menu` must outlive the tiles.
    PinnedTiles(BrowserStore& store, ContextMenu& menu);
    ~PinnedTiles() override;

    /// Shows the store as it is now. Gives the tile of the tab in front if it is another one than
    /// before, and nothing otherwise.
    BrowserPinnedTile* update();
    void setNarrow(Narrow narrow);
    [[nodiscard]] bool empty() const { return order_.empty(); }
    /// Whether the last change was asked for by a key that closes the focused tile. Answers once.
    [[nodiscard]] bool takeFocusClaim() { return input_.takeFocusClaim(); }

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    [[nodiscard]] int columns() const { return narrow_ == Narrow::yes ? 1 : 4; }
    BrowserPinnedTile& tile(const std::shared_ptr<BrowserTab>& tab);
    [[nodiscard]] BrowserPinnedTile* tileOf(Gtk::Widget* widget) const;

    BrowserStore& store_;
    ColumnInput input_;
    std::unordered_map<Uuid, std::unique_ptr<BrowserPinnedTile>> tiles_;
    std::vector<Uuid> order_;
    std::optional<Uuid> active_;
    Narrow narrow_ = Narrow::no;
};

}  // namespace orvu
