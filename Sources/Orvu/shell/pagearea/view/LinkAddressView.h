#pragma once

#include "foundation/Signal.h"
#include "platform/WebView.h"

#include <gtkmm/label.h>

namespace orvu {

/// Where the link leads that the pointer is over, at the foot of a page. It takes no click, and
/// stands at the other side where the pointer comes near.
class LinkAddressView : public Gtk::Label {
public:
    /// `page` is the widget that the pointer moves over; it must outlive this.
    explicit LinkAddressView(Gtk::Widget& page);

    /// Shows what belongs to `page`; nothing without one. The view must be live.
    void show(const WebView* page);

private:
    void keepClear(double x, double y);

    Gtk::Widget& page_;
    std::optional<Url> shown_;
};

}  // namespace orvu
