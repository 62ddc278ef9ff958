#pragma once

#include "foundation/async/TaskScope.h"
#include "foundation/Observable.h"
#include "platform/MainLoop.h"
#include "platform/UpdateInstaller.h"
#include "platform/UpdateTransport.h"
#include "profiles/Settings.h"
#include "update/ApplicationFacts.h"
#include "update/UpdateRelease.h"
#include "update/UpdateServer.h"

#include <functional>
#include <optional>
#include <string>

namespace orvu {

/// Who asked for a check.
enum class UserInitiated { no, yes };

/// Keeps the program current: asks the server at launch and every four hours, decides whether a
/// release is newer than the running copy, and takes it from the offer to the restart. There is
/// one for all windows. Nothing of it is kept between runs.
class Updater : public sigc::trackable {
public:
    using Release = UpdateRelease;

    struct State {
        enum class Kind {
            idle,
            checking,
            upToDate,
            available,    ///< with the version
            downloading,  ///< with the version
            ready,        ///< with the version
            failed,       ///< with the message
        };
        Kind kind = Kind::idle;
        std::string text{};

        friend bool operator==(const State&, const State&) = default;
    };

    /// What it works with; all must outlive it.
    struct Seam {
        UserDefaults& defaults;
        Settings& settings;
        MainLoop& loop;
        UpdateTransport& transport;
        UpdateInstaller& installer;
    };

    static constexpr std::chrono::seconds firstCheck{8};  ///< after `start`
    static constexpr std::chrono::hours interval{4};
    static constexpr std::size_t longestShownVersion = 40;  ///< code points

    /// `running` is what the running copy says of itself.
    Updater(Seam seam, UpdateServer server, ApplicationFacts running);
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    ~Updater() = default;

    Observable<State> state;
    Observable<std::optional<Date>> lastChecked;  ///< the last manifest that could be read
    Observable<std::uint64_t> received{0};        ///< bytes of the archive that came so far

    /// Called once, when the program has been launched.
    void start();
    void check(UserInitiated userInitiated);
    /// Fetches and stages the release on offer, if there is one.
    void download();
    /// Lets the staged update take this copy's place, and tells `connectQuit`. The pages have been
    /// asked before.
    void installAndRestart();
    /// Called when the program is about to end.
    void installOnQuitIfReady();
    /// Whether the release notes of this version are due; true once.
    [[nodiscard]] bool takeWhatsNewToShow();
    /// Called when a window can be seen for the first time in this run.
    void didShowWindow() { seam_.installer.confirmStart(); }

    /// What the person decided; nothing before.
    [[nodiscard]] std::optional<bool> automatic() const;
    /// Whether this copy may replace itself. If not, neither question nor pill is shown.
    [[nodiscard]] bool updatesItself() const;
    /// The page of the release notes; nothing without a server.
    [[nodiscard]] std::optional<Url> whatsNew() const;
    [[nodiscard]] const UpdateServer& server() const { return server_; }
    [[nodiscard]] const ApplicationFacts& running() const { return running_; }
    [[nodiscard]] std::int64_t currentBuild() const { return running_.build; }
    [[nodiscard]] const std::string& currentVersion() const { return running_.version; }

    /// Calls `slot` when the program is to end for an update.
    sigc::connection connectQuit(const sigc::slot<void()>& slot) { return quit_.connect(slot); }

private:
    using Kind = State::Kind;

    void scheduleNext();
    void automaticChanged();
    [[nodiscard]] bool isInHand() const;
    [[nodiscard]] bool counts(const Release& release) const;
    [[nodiscard]] Task<void> runCheck(UserInitiated userInitiated);
    void take(const std::optional<Release>& release, UserInitiated userInitiated);
    [[nodiscard]] Task<void> runDownload(Release release);
    [[nodiscard]] Task<std::string> fetch(Release release);
    [[nodiscard]] Task<std::string> fetchInto(Release release, std::filesystem::path place);
    [[nodiscard]] Task<std::string> verifyAndStage(Release release);

    Seam seam_;
    const UpdateServer server_;
    const ApplicationFacts running_;
    std::optional<Release> release_;
    std::optional<std::filesystem::path> staged_;
    sigc::signal<void()> quit_;
    Scheduled first_;
    Scheduled timer_;
    TaskScope tasks_;
};

}  // namespace orvu
