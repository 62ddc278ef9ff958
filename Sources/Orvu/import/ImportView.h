#pragma once

#include "core/AppServices.h"
#include "foundation/async/TaskScope.h"
#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
#include "import/Importer.h"
#include "platform/OpenPanel.h"

#include <sigc++/sigc++.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// Bringing bookmarks and history of another browser into a profile, without a widget: which
/// browser is chosen, what of it, and what came of that. All texts are those of `platformText`'s
/// source.
class ImportView : public std::enable_shared_from_this<ImportView>, public sigc::trackable {
public:
    using Source = BrowserImporter::Source;

    static constexpr Phrase title = phrase("Import from Another Browser");
    static constexpr int width = 680;   ///< points
    static constexpr int height = 560;  ///< points
    static constexpr Phrase heading = phrase("Bring your web with you");
    static constexpr Phrase sourcesLabel = phrase("Browsers");
    static constexpr Phrase fileTitle = phrase("From a file…");
    static constexpr Phrase fileMessage =
        phrase("Choose a bookmarks file you exported from Safari, Firefox or another browser.");
    static constexpr Phrase passwords =
        phrase("Passwords stay in your old browser or Apple Passwords. Orvu never reads them.");
    static constexpr Phrase accessMessage = phrase(
        "macOS keeps Safari's files private until you allow it. Turn on Orvu under Full Disk "
        "Access, then come back.");
    static constexpr Phrase accessByFile =
        phrase("Or in Safari choose File › Export › Bookmarks…, then use “From a file…”.");
    static constexpr Phrase checkTitle = phrase("Check Again");

    /// Something that can be brought over or left.
    struct Choice {
        std::string_view title;
        std::string_view caption;
        Observable<bool>* isOn;
    };

    /// What the view works with.
    struct Tools {
        AppServices& services;
        BrowserImporter importer;
        OpenPanel& openPanel;
        TaskScope& reads;  ///< what is begun goes on in it, also without the view
    };

    /// Looks for browsers. All that `tools` refer to must outlive the view.
    [[nodiscard]] static std::shared_ptr<ImportView> make(const Tools& tools, Profile profile);
    ImportView(const ImportView&) = delete;
    ImportView& operator=(const ImportView&) = delete;

    // What is brought over.
    Observable<bool> bookmarks{true};
    Observable<bool> history{true};

    // What shows.
    /// Where it lands, as the list of profiles has it now.
    [[nodiscard]] Profile profile() const;
    /// The profile was deleted: nothing is brought into it any more.
    [[nodiscard]] bool isProfileGone() const;
    [[nodiscard]] std::string intro() const;
    /// The browsers that were found, in the order in which they are shown.
    [[nodiscard]] const std::vector<Source>& sources() const { return sources_; }
    [[nodiscard]] const std::optional<Source>& picked() const { return picked_; }
    /// What a row says below the browser's name.
    [[nodiscard]] static std::string_view state(const Source& source);
    /// The system denies the chosen browser's files: a panel with `accessMessage` and
    /// `accessByFile` takes the place of the choices.
    [[nodiscard]] bool needsAccess() const { return picked_ && picked_->needsAccess; }
    [[nodiscard]] std::vector<Choice> choices();
    /// A read is under way.
    [[nodiscard]] bool working() const { return working_; }
    /// What came of it last.
    [[nodiscard]] const std::optional<std::string>& message() const { return message_; }
    /// The last read was refused by the system.
    [[nodiscard]] bool blocked() const { return refused_.has_value(); }
    /// What can be done where the system denies the chosen browser's files, or refused those that
    /// were read last; empty otherwise.
    [[nodiscard]] std::string help() const;
    [[nodiscard]] std::string runTitle() const;
    [[nodiscard]] bool canRun() const;

    // What is done.
    void pick(std::string_view id);
    /// Looks for browsers once more; the chosen one stays so.
    void checkAgain();
    /// Reads what is wanted of the chosen browser, and merges it into the profile.
    void run();
    /// Has the person choose a file of bookmarks, and merges those.
    void chooseFile();

    /// Calls `slot` after each change of anything that shows.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    ImportView(const Tools& tools, Profile profile);

    using View = std::shared_ptr<ImportView>;

    void begin();
    void end(std::string message);
    void endRefused(const Source& source);
    [[nodiscard]] int merge(const std::vector<BookmarkStore::Entry>& entries) const;
    [[nodiscard]] int merge(const std::vector<Visit>& visits) const;
    [[nodiscard]] Task<void> choose();
    [[nodiscard]] static Task<void> read(View view, Source source);
    [[nodiscard]] static Task<void> readFile(View view, std::filesystem::path file);

    AppServices& services_;
    const BrowserImporter importer_;
    OpenPanel& openPanel_;
    TaskScope& reads_;
    const Profile profile_;
    std::vector<Source> sources_;
    std::optional<Source> picked_;
    bool working_ = false;
    std::optional<std::string> message_;
    std::optional<Source> refused_;  ///< what the last read was of
    sigc::signal<void()> changed_;
    TaskScope choosing_;  // last, so that it ends before what it uses
};

}  // namespace orvu
