#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/column/view/ColumnLine.h"
#include "shell/siteinfo/view/CaptureDot.h"
#include "site/icons/view/BrowserSiteBadge.h"

#include <gtkmm/button.h>
#include <gtkmm/overlay.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// A pinned tab, with a dot on its corner while its page looks or listens.
class BrowserPinnedTile : public Gtk::Overlay, public ColumnLine {
public:
    static constexpr int height = 40;
    static constexpr int badgeSize = 18;

    /// `store` must outlive the tile.
    BrowserPinnedTile(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab);

    void setActive(bool active);

    [[nodiscard]] Gtk::Widget& widget() override { return *this; }
    [[nodiscard]] bool isTab() const override { return true; }
    void takeFocus() override { select_.grab_focus(); }
    [[nodiscard]] std::vector<MenuEntry> contextMenu() override;
    void remove() override;

private:
    void select();
    void refresh();

    BrowserStore& store_;
    const std::weak_ptr<BrowserTab> tab_;  // a closed tab must not live on in its tile
    Gtk::Button select_;
    BrowserSiteBadge badge_;
    CaptureDot dot_;
    std::optional<std::string> shownTitle_;
    FrameRefresh refresh_;
};

}  // namespace orvu
