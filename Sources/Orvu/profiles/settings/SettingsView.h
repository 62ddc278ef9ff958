#pragma once

#include "assistant/SkillStore.h"
#include "core/AppServices.h"
#include "foundation/async/TaskScope.h"
#include "foundation/text/Translation.h"
#include "import/ImportWindow.h"
#include "profiles/settings/SettingsWindow.h"
#include "profiles/Settings.h"
#include "update/UpdateStatus.h"

#include <sigc++/sigc++.h>

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvu {

/// The settings, as their window shows them: what stands there from top to bottom, and what it does.
/// All of its texts are those of `platformText`'s source.
class SettingsView : public sigc::trackable {
public:
    static constexpr Phrase title = phrase("Orvu Settings");
    static constexpr int width = 520;   ///< points
    static constexpr int height = 560;  ///< points

    /// A setting that is on or off. It is read and written as it is shown and moved.
    struct Switch {
        std::string_view label;
        Setting<bool>* setting;
        bool isEnabled = true;
    };
    /// The choice among the search services.
    struct EnginePicker {
        std::string_view label;
        Setting<Prefs::Engine>* setting;
    };
    struct Button {
        std::string_view label;  ///< in front of it; empty for none
        std::string_view title;
        std::function<void()> press;
    };
    /// How far updates are.
    struct Status {
        UpdateStatus* status;
    };
    /// What explains the row above.
    struct Caption {
        std::string text;
    };
    /// A skill of the person's own, with a button that removes it.
    struct Skill {
        static constexpr Phrase removeTitle = phrase("Delete");

        std::string name;  ///< with its slash
        std::string instruction;
        std::function<void()> remove;
    };
    using Row = std::variant<Switch, EnginePicker, Button, Status, Caption, Skill>;
    struct Section {
        std::string_view title;
        std::vector<Row> rows;
    };

    /// What the settings are about; all must outlive this.
    struct Subjects {
        AppServices& services;
        SkillStore& skills;
        Updater& updater;
        ImportWindow& import;
    };
    SettingsView(Subjects subjects, SettingsWindow::Actions actions);
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    /// What stands there now. Rows are good until the next change.
    [[nodiscard]] std::vector<Section> sections();
    /// What was cleared last, in a sentence; empty for nothing.
    [[nodiscard]] const std::string& cleared() const { return cleared_; }

    /// Calls `slot` when `sections` became others. Switches that moved don't change them: their
    /// settings tell.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] Section general();
    [[nodiscard]] Section updates();
    [[nodiscard]] Section search();
    [[nodiscard]] Section privacy();
    [[nodiscard]] Section kesto();
    [[nodiscard]] Section tabs();
    void clearHistory();
    void clearWebsiteData();
    [[nodiscard]] Task<void> removeWebsiteData();
    void tellCleared(std::string_view what);

    AppServices& services_;
    SkillStore& skills_;
    Updater& updater_;
    ImportWindow& import_;
    const sigc::slot<void()> makeDefault_;
    UpdateStatus updateStatus_;
    std::string cleared_;
    sigc::signal<void()> changed_;
    TaskScope clearing_;  // last, so that it ends before what it uses
};

}  // namespace orvu
