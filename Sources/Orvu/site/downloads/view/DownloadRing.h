#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// How far a download is, as a ring that closes clockwise from the top.
class DownloadRing : public Gtk::Widget {
public:
    static constexpr int side = 26;

    DownloadRing();

    /// How much of the ring is drawn, from 0 to 1.
    void setFraction(double fraction);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    static constexpr double lineWidth = 2;

    double fraction_ = 0;
};

}  // namespace orvu
