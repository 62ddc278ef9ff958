#pragma once

#include <gtkmm/widget.h>

#include <string>

namespace orvu {

/// The picture of a site: the first letter of its host on the site's colour. Decoration only:
/// assistive technology doesn't see it.
class SiteLetter : public Gtk::Widget {
public:
    /// `size` is both width and height, in pixels.
    explicit SiteLetter(int size);
    void setHost(const std::string& host);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const int size_;
    std::string host_;
};

}  // namespace orvu
