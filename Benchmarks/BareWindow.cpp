// The least program that shows a page in a window: what the start and the memory of the browser
// are measured against.
#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace {

void activate(GtkApplication* application, gpointer address) {
    GtkWidget* const window = gtk_application_window_new(application);
    GtkWidget* const view = webkit_web_view_new();
    gtk_window_set_default_size(GTK_WINDOW(window), 1280, 820);
    gtk_window_set_child(GTK_WINDOW(window), view);
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), static_cast<const char*>(address));
    gtk_window_present(GTK_WINDOW(window));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 1;
    GtkApplication* const application =
        gtk_application_new("app.orvu.BareWindow", G_APPLICATION_DEFAULT_FLAGS);
    g_signal_connect(application, "activate", G_CALLBACK(activate), argv[1]);
    const int status = g_application_run(G_APPLICATION(application), 1, argv);
    g_object_unref(application);
    return status;
}
