#include "platform/linux/desktop/GtkOpenPanel.h"

#include "foundation/text/Translation.h"

#include <giomm/file.h>
#include <gtkmm/dialog.h>
#include <gtkmm/filefilter.h>

namespace orvu {
namespace {

using Choice = std::optional<std::filesystem::path>;

Glib::RefPtr<Gtk::FileFilter> filter(const char* name, const std::vector<const char*>& types) {
    auto result = Gtk::FileFilter::create();
    result->set_name(name);
    for (const char* const type : types) result->add_mime_type(type);
    return result;
}

}  // namespace

Future<Choice> GtkOpenPanel::chooseHtml(const std::string& message) {
    const Promise<Choice> promise;
    chooser_ = Gtk::FileChooserNative::create(message, window_, Gtk::FileChooser::Action::OPEN,
                                              phrase("Open").c_str(), phrase("Cancel").c_str());
    chooser_->set_modal(true);
    chooser_->add_filter(
        filter(phrase("Bookmarks").c_str(), {"text/html", "application/xhtml+xml"}));
    chooser_->signal_response().connect([promise, panel = chooser_.get()](int response) {
        const auto file = response == Gtk::ResponseType::ACCEPT ? panel->get_file() : nullptr;
        const std::string path = file ? file->get_path() : "";
        promise.resolve(path.empty() ? std::nullopt : Choice{path});
    });
    promise.onAbandoned([this] { chooser_.reset(); });
    chooser_->show();
    return promise.future();
}

}  // namespace orvu
