// Preloaded into the real program, writes when its first window gets a key and when it has drawn a
// frame, the processor's time that the frame took, and what the notch's primary row says in it; if
// asked to, also which turns of the main loop were long. Benchmarks/notch-frames and reader-frames
// read it.
#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr unsigned beatInterval = 4;  // milliseconds
constexpr double halfFrame = 8;       // milliseconds

std::FILE* log = nullptr;
GtkWindow* window = nullptr;
double begin = 0;  // of the frame, in milliseconds of the processor

double threadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The first widget below `widget` that has a style class and can be seen.
GtkWidget* find(GtkWidget* widget, const char* style) {
    if (!gtk_widget_get_mapped(widget)) return nullptr;
    if (gtk_widget_has_css_class(widget, style)) return widget;
    for (auto* child = gtk_widget_get_first_child(widget); child;
         child = gtk_widget_get_next_sibling(child)) {
        if (auto* const found = find(child, style)) return found;
    }
    return nullptr;
}

void note(const char* what, double cost, const char* text) {
    std::fprintf(log, "%.3f %s %.3f %s\n", static_cast<double>(g_get_monotonic_time()) / 1000, what,
                 cost, text);
}

void beforePaint(GdkFrameClock*, gpointer) { begin = threadMilliseconds(); }

void afterPaint(GdkFrameClock*, gpointer) {
    auto* const title = find(GTK_WIDGET(window), "notch-choice-title");
    note("frame", threadMilliseconds() - begin, title ? gtk_label_get_text(GTK_LABEL(title)) : "");
    std::fflush(log);
}

gboolean keyPressed(GtkEventControllerKey*, guint key, guint, GdkModifierType, gpointer) {
    note("key", 0, gdk_keyval_name(key));
    return GDK_EVENT_PROPAGATE;
}

/// Notes the processor's time of a turn of the main loop that was longer than half a frame.
gboolean beat(gpointer) {
    static double previous = threadMilliseconds();
    const double now = threadMilliseconds();
    if (now - previous > halfFrame) note("turn", now - previous, "");
    previous = now;
    return G_SOURCE_CONTINUE;
}

gboolean watchWindow(gpointer) {
    GListModel* const windows = gtk_window_get_toplevels();
    if (g_list_model_get_n_items(windows) == 0) return G_SOURCE_CONTINUE;
    window = GTK_WINDOW(g_list_model_get_item(windows, 0));
    if (!gtk_widget_get_mapped(GTK_WIDGET(window))) return G_SOURCE_CONTINUE;
    GtkEventController* const keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect(keys, "key-pressed", G_CALLBACK(keyPressed), nullptr);
    gtk_widget_add_controller(GTK_WIDGET(window), keys);
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(window));
    g_signal_connect(clock, "before-paint", G_CALLBACK(beforePaint), nullptr);
    g_signal_connect(clock, "after-paint", G_CALLBACK(afterPaint), nullptr);
    return G_SOURCE_REMOVE;
}

/// Runs before the program's own main.
struct Start {
    Start() {
        const char* const file = std::getenv("ORVU_FRAME_LOG");
        if (!file) return;
        log = std::fopen(file, "w");
        if (log && std::getenv("ORVU_FRAME_LOG_BEATS")) {
            g_timeout_add_full(G_PRIORITY_HIGH, beatInterval, beat, nullptr, nullptr);
        }
        unsetenv("LD_PRELOAD");  // the pages' processes have no such window
        unsetenv("ORVU_FRAME_LOG");
        if (log) std::setvbuf(log, nullptr, _IOLBF, BUFSIZ);  // who reads along reads whole lines
        if (log) g_timeout_add(50, watchWindow, nullptr);
    }
} start;

}  // namespace
