#include "platform/linux/web/PagePrinting.h"

#include "foundation/text/Translation.h"

#include <gtkmm/window.h>

#include <utility>

namespace orvu {

PagePrinting::PagePrinting(WebKitWebView* view, MainLoop& loop) : view_(view), loop_(loop) {
    g_signal_connect(view_, "print", G_CALLBACK(asked), this);
    g_signal_connect(view_, "unmap", G_CALLBACK(unmapped), this);
}

PagePrinting::~PagePrinting() { g_signal_handlers_disconnect_by_data(view_, this); }

void PagePrinting::print() {
    if (dialog_) return dialog_->present();
    isOfPage_ = false;
    show(GObjectPointer<WebKitPrintOperation>::adopt(webkit_print_operation_new(view_)));
}

gboolean PagePrinting::asked(WebKitWebView* view, WebKitPrintOperation* operation, gpointer data) {
    auto& self = *static_cast<PagePrinting*>(data);
    const bool isShown = gtk_widget_get_mapped(GTK_WIDGET(view)) != FALSE;
    if (isShown && !self.dialog_ && !self.isPausing_) {
        self.isOfPage_ = true;
        self.show(GObjectPointer<WebKitPrintOperation>::retain(operation));
    }
    return TRUE;  // no dialog of the engine's own, which the program couldn't close
}

void PagePrinting::unmapped(GtkWidget*, gpointer data) {
    static_cast<PagePrinting*>(data)->close();
}

void PagePrinting::show(GObjectPointer<WebKitPrintOperation> operation) {
    GtkRoot* const root = gtk_widget_get_root(GTK_WIDGET(view_));
    if (!root || !GTK_IS_WINDOW(root)) return;
    operation_ = std::move(operation);
    dialog_ = std::make_unique<Gtk::PrintUnixDialog>(*Glib::wrap(GTK_WINDOW(root)),
                                                     phrase("Print").c_str());
    dialog_->set_hide_on_close(true);
    dialog_->signal_response().connect([this](int response) { responded(response); });
    dialog_->present();
}

void PagePrinting::responded(int response) {
    if (response == Gtk::ResponseType::OK) {
        webkit_print_operation_set_print_settings(operation_.get(),
                                                  dialog_->get_settings()->gobj());
        if (const auto setup = dialog_->get_page_setup()) {
            webkit_print_operation_set_page_setup(operation_.get(), setup->gobj());
        }
        webkit_print_operation_print(operation_.get());
    }
    if (isOfPage_) {
        isPausing_ = true;
        pause_ = loop_.after(pause, [this] { isPausing_ = false; });
    }
    dialog_->set_visible(false);
    closing_ = loop_.after(std::chrono::milliseconds{0}, [this] { close(); });
}

void PagePrinting::close() {
    closing_.cancel();
    dialog_.reset();
    operation_ = {};
}

}  // namespace orvu
