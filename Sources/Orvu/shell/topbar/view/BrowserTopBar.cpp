#include "shell/topbar/view/BrowserTopBar.h"

#include "look/view/SymbolImage.h"

#include <algorithm>
#include <cmath>

namespace orvu {

BrowserTopBar::BrowserTopBar(BrowserView& view)
    : navigation_(view),
      update_(view.updater(), view.services().settings()),
      downloads_(view.services().downloads()),
      shelf_(view.sharedStore()),
      kesto_(view),
      menu_(view.sharedStore()) {
    add_css_class("top-bar");
    append(controls_);
    append(navigation_);
    middle_.set_hexpand(true);
    append(middle_);
    if (view.store().isPrivate()) addPrivateMark();
    append(update_);
    append(downloads_);
    append(shelf_);
    append(kesto_);
    append(menu_);
}

int BrowserTopBar::roomInTheMiddle(const Gtk::Widget& window) const {
    graphene_rect_t free;
    auto* const middle = const_cast<GtkWidget*>(middle_.gobj());
    auto* const whole = const_cast<GtkWidget*>(window.gobj());
    if (!gtk_widget_compute_bounds(middle, whole, &free)) return 0;
    const double centre = window.get_width() / 2.0;
    const double left = centre - static_cast<double>(free.origin.x);
    const double right = static_cast<double>(free.origin.x + free.size.width) - centre;
    return static_cast<int>(std::floor(2 * std::max(std::min(left, right), 0.0)));
}

void BrowserTopBar::addPrivateMark() {
    privateMark_.add_css_class("private-mark");
    privateMark_.set_valign(Gtk::Align::CENTER);
    setSymbol(eyeglasses_, "eyeglasses", 14);
    privateMark_.append(eyeglasses_);
    privateMark_.append(private_);
    append(privateMark_);
}

}  // namespace orvu
