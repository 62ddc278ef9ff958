#include "look/view/Tooltips.h"

#include <sigc++/adaptors/track_obj.h>

namespace orvu {

void hideTooltipWhileOpen(Gtk::Widget& opener, Gtk::Popover& popover) {
    // Not by switching the tooltip off: whoever sets its text meanwhile switches it on.
    const auto query = [&opener, &popover](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>&) {
        if (popover.get_visible()) g_signal_stop_emission_by_name(opener.gobj(), "query-tooltip");
        return false;
    };
    opener.signal_query_tooltip().connect(sigc::track_object(query, popover), false);
    // One that stands already goes.
    const auto changed = [&opener] { opener.trigger_tooltip_query(); };
    popover.property_visible().signal_changed().connect(sigc::track_object(changed, opener));
}

}  // namespace orvu
