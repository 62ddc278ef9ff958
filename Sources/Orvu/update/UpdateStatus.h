#pragma once

#include "foundation/text/Translation.h"
#include "update/Updater.h"

#include <sigc++/sigc++.h>

#include <string>
#include <string_view>

namespace orvu {

/// The row of the settings that tells how far updates are, with its one button.
class UpdateStatus {
public:
    static constexpr Phrase checkTitle = phrase("Check Now");
    static constexpr Phrase restartTitle = phrase("Restart to Update");

    /// `restart` asks the pages and lets the update take this copy's place. `updater` must outlive
    /// this.
    UpdateStatus(Updater& updater, sigc::slot<void()> restart)
        : updater_(updater), restart_(std::move(restart)) {}

    /// The program with its version.
    [[nodiscard]] std::string title() const { return "Orvu " + updater_.currentVersion(); }
    [[nodiscard]] std::string line() const;
    [[nodiscard]] std::string_view buttonTitle() const;
    [[nodiscard]] bool isEnabled() const;
    void press();

    /// Calls `slot` when any of this became another.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return updater_.state.connectChanged(slot);
    }

private:
    Updater& updater_;
    const sigc::slot<void()> restart_;
};

}  // namespace orvu
