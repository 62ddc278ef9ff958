#include "look/view/Controllers.h"

namespace orvu {

void removeAfterEvent(const Glib::RefPtr<Gtk::EventController>& controller) {
    const auto remove = +[](gpointer data) -> gboolean {
        auto* const held = GTK_EVENT_CONTROLLER(data);
        GtkWidget* const widget = gtk_event_controller_get_widget(held);
        if (widget) gtk_widget_remove_controller(widget, held);
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_DEFAULT, remove, g_object_ref(controller->gobj()), g_object_unref);
}

}  // namespace orvu
