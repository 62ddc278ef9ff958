#include "shell/import/view/ImportWindowView.h"

#include <string>
#include <utility>

namespace orvu {

void ImportWindowView::show(const std::optional<Profile>& profile) {
    if (!window_) {
        window_ = std::make_unique<Window>();
        application_.add_window(*window_);
    }
    const ImportView::Tools tools{services_, importer_, window_->openPanel(), reads_};
    window_->show(ImportView::make(tools, profile.value_or(services_.profiles().personal())));
    window_->present();
}

ImportWindowView::Window::Window()
    : ToolWindow({.title = std::string{ImportView::title},
                  .width = ImportView::width,
                  .height = ImportView::height,
                  .cssClass = "import",
                  .showsTitle = false,
                  .movesByBackground = true}) {}

ImportWindowView::Window::~Window() { unset_default_widget(); }

void ImportWindowView::Window::show(const std::shared_ptr<ImportView>& import) {
    unset_default_widget();  // it goes with its form
    auto form = std::make_unique<ImportForm>(import);
    setContent(*form);
    form_ = std::move(form);
    import_ = import;
    watch_ = import_->connectChanged([this] {
        if (import_->isProfileGone()) close();
    });
    set_default_widget(form_->runButton());
}

}  // namespace orvu
