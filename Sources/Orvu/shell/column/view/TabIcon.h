#pragma once

#include "core/BrowserStore.h"
#include "site/icons/view/BrowserSiteBadge.h"

#include <gtkmm/widget.h>

namespace orvu {

/// The icon of a tab in its row, with a ring around it while the page loads.
class TabIcon : public Gtk::Widget {
public:
    static constexpr int frame = 22;
    static constexpr int badgeSize = 16;

    /// `store` must outlive the icon.
    explicit TabIcon(const BrowserStore& store);
    ~TabIcon() override;
    void show(const BrowserTab& tab);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void drawRing(GtkSnapshot* snapshot);

    BrowserSiteBadge badge_;
    double ring_ = 0;  ///< the part of the circle that is drawn; 0: no ring
};

}  // namespace orvu
