#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/GObjectPointer.h"

#include <gtkmm/printunixdialog.h>
#include <webkit/webkit.h>

#include <chrono>
#include <memory>

namespace orvu {

/// The desktop's dialog for printing a page. It holds up nothing: it goes with the page, when that
/// leaves the window, and when the program ends.
class PagePrinting {
public:
    /// After a person closed the dialog that a page opened, the page opens none for so long.
    static constexpr std::chrono::seconds pause{10};

    /// Both must outlive this.
    PagePrinting(WebKitWebView* view, MainLoop& loop);
    PagePrinting(const PagePrinting&) = delete;
    PagePrinting& operator=(const PagePrinting&) = delete;
    ~PagePrinting();

    /// The person wants the page printed.
    void print();
    /// Another document stands, or none.
    void documentGone() { close(); }

private:
    static gboolean asked(WebKitWebView* view, WebKitPrintOperation* operation, gpointer data);
    static void unmapped(GtkWidget* view, gpointer data);
    void show(GObjectPointer<WebKitPrintOperation> operation);
    void responded(int response);
    void close();

    WebKitWebView* const view_;
    MainLoop& loop_;
    GObjectPointer<WebKitPrintOperation> operation_;
    std::unique_ptr<Gtk::PrintUnixDialog> dialog_;
    bool isOfPage_ = false;
    Scheduled pause_;
    bool isPausing_ = false;
    Scheduled closing_;  ///< the dialog, after its own signal
};

}  // namespace orvu
