#pragma once

#include "foundation/async/TaskScope.h"
#include "foundation/Signal.h"
#include "import/ImportView.h"
#include "import/ImportWindow.h"
#include "import/view/ImportForm.h"
#include "platform/linux/desktop/GtkOpenPanel.h"
#include "shell/view/ToolWindow.h"

#include <gtkmm/application.h>

#include <memory>

namespace orvu {

/// The window of importing on this desktop. It is made when it is shown first, hidden when it is
/// closed, and begins afresh each time it is shown. What it began to read is read to its end.
class ImportWindowView : public ImportWindow {
public:
    /// `application` and `services` must outlive the window.
    ImportWindowView(Gtk::Application& application, AppServices& services, BrowserImporter importer)
        : application_(application), services_(services), importer_(std::move(importer)) {}

    void show(const std::optional<Profile>& profile) override;

private:
    class Window : public ToolWindow {
    public:
        Window();
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        ~Window() override;

        [[nodiscard]] OpenPanel& openPanel() { return panel_; }
        void show(const std::shared_ptr<ImportView>& import);

    private:
        GtkOpenPanel panel_{*this};
        std::shared_ptr<ImportView> import_;
        std::unique_ptr<ImportForm> form_;
        ScopedConnection watch_;
    };

    Gtk::Application& application_;
    AppServices& services_;
    const BrowserImporter importer_;
    std::unique_ptr<Window> window_;
    TaskScope reads_;  // last, so that it ends before what it uses
};

}  // namespace orvu
