#pragma once

#include "foundation/Signal.h"
#include "site/icons/SiteIcons.h"
#include "site/icons/view/IconTexture.h"

#include <gtkmm/widget.h>
#include <pangomm/layout.h>

#include <string>

namespace orvu {

/// The icon of a site, or a coloured letter as long as there is none. Assistive technology does
/// not see it: what it stands beside has the name.
class SiteIcon : public Gtk::Widget {
public:
    enum class Shape { square, circle };

    /// `size` is the length of a side.
    SiteIcon(SiteIcons icons, int size, Shape shape = Shape::square);

    /// Shows the icon of `host`, and follows it.
    void setHost(const std::string& host);

protected:
    /// Shows `image`, whatever the store has; null to ask the store.
    void show(const std::string& host, const ImagePointer& image);

    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void ask();
    void use(ImagePointer image);
    void drawImage(GtkSnapshot* snapshot);
    void drawLetter(GtkSnapshot* snapshot);

    const SiteIcons icons_;
    const int size_;
    const Shape shape_;
    std::string host_;
    ImagePointer image_;
    IconTexture texture_;  ///< of `image_`, at `textureScale_`
    int textureScale_ = 0;
    Glib::RefPtr<Pango::Layout> letter_;  ///< of `host_`; made when it is first drawn
    bool isAsked_ = false;
    ScopedConnection arrival_;
};

}  // namespace orvu
