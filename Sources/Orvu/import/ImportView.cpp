#include "import/ImportView.h"

#include "core/BrowserStore.h"
#include "foundation/text/Translation.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

std::string countedBookmarks(int count) {
    return trn("{1} new bookmark", "{1} new bookmarks", count);
}

std::string countedVisits(int count) { return trn("{1} visit", "{1} visits", count); }

/// How many of each were new; nothing for what was not wanted.
struct Brought {
    std::optional<int> bookmarks;
    std::optional<int> visits;

    [[nodiscard]] bool anything() const { return bookmarks.value_or(0) + visits.value_or(0) > 0; }
};

std::string sentence(const Brought& brought, const std::string& browser) {
    if (!brought.anything()) return tr("Everything from {1} is already in Orvu.", browser);
    const auto& [bookmarks, visits] = brought;
    if (bookmarks && visits) {
        return tr("Brought over {1} and {2} from {3}.", countedBookmarks(*bookmarks),
                  countedVisits(*visits), browser);
    }
    return tr("Brought over {1} from {2}.",
              bookmarks ? countedBookmarks(*bookmarks) : countedVisits(*visits), browser);
}

}  // namespace

std::shared_ptr<ImportView> ImportView::make(const Tools& tools, Profile profile) {
    return std::shared_ptr<ImportView>{new ImportView{tools, std::move(profile)}};
}

ImportView::ImportView(const Tools& tools, Profile profile)
    : services_(tools.services),
      importer_(tools.importer),
      openPanel_(tools.openPanel),
      reads_(tools.reads),
      profile_(std::move(profile)),
      sources_(importer_.sources()) {
    const auto open = std::ranges::find(sources_, false, &Source::needsAccess);
    if (open != sources_.end()) picked_ = *open;
    const auto tell = sigc::mem_fun(changed_, &sigc::signal<void()>::emit);
    bookmarks.connectChanged(tell);
    history.connectChanged(tell);
    services_.profiles().connectChanged(sigc::track_object([this] { changed_.emit(); }, *this));
}

Profile ImportView::profile() const {
    const auto& all = services_.profiles().profiles();
    const auto found = std::ranges::find(all, profile_.id, &Profile::id);
    return found != all.end() ? *found : profile_;
}

bool ImportView::isProfileGone() const { return services_.profiles().wasRemoved(profile_.id); }

std::string ImportView::intro() const {
    if (sources_.empty()) {
        return phrase(
            "Orvu didn't find another browser on this Mac. You can still bring an exported "
            "bookmarks file.");
    }
    const Profile target = profile();
    const bool isAlone = services_.profiles().profiles().size() == 1;
    const bool isPlain = target.id == Profile::personalID && isAlone;
    if (isPlain) {
        return phrase(
            "Orvu found these browsers on this Mac. Pick one, choose what to bring, and it lands "
            "in Bookmarks and History.");
    }
    return tr(
        "Orvu found these browsers on this Mac. Pick one, choose what to bring, and it lands "
        "in your {1} profile.",
        target.name);
}

std::string_view ImportView::state(const Source& source) {
    return source.needsAccess ? phrase("Needs access") : phrase("Found");
}

std::vector<ImportView::Choice> ImportView::choices() {
    return {{phrase("Bookmarks"), phrase("Every folder, including the bookmarks bar"), &bookmarks},
            {phrase("History"), phrase("The last 30 days, so suggestions know where you go"),
             &history}};
}

std::string ImportView::help() const {
    const std::optional<Source>& source = needsAccess() ? picked_ : refused_;
    if (!source) return "";
    return tr(
        "{1} keeps its data in {2}. See to it that you may read that folder, and Orvu too where it "
        "runs in a sandbox of its own. Or export the bookmarks there, and use “From a file…”.",
        source->name, source->folder.string());
}

std::string ImportView::runTitle() const {
    if (working_) return phrase("Importing…");
    return picked_ ? tr("Import from {1}", picked_->name) : std::string{phrase("Import")};
}

bool ImportView::canRun() const {
    return !working_ && picked_ && !picked_->needsAccess && (bookmarks.get() || history.get());
}

void ImportView::pick(std::string_view id) {
    const auto found = std::ranges::find(sources_, id, &Source::id);
    if (found == sources_.end() || (picked_ && picked_->id == id)) return;
    picked_ = *found;
    changed_.emit();
}

void ImportView::checkAgain() {
    sources_ = importer_.sources();
    if (picked_) {
        const auto found = std::ranges::find(sources_, picked_->id, &Source::id);
        picked_ = found != sources_.end() ? std::optional{*found} : std::nullopt;
    }
    changed_.emit();
}

void ImportView::run() {
    if (canRun()) reads_.start(read(shared_from_this(), *picked_));
}

void ImportView::chooseFile() {
    if (working_) return;
    choosing_.cancel();
    choosing_.start(choose());
}

void ImportView::begin() {
    working_ = true;
    message_.reset();
    refused_.reset();
    changed_.emit();
}

void ImportView::end(std::string message) {
    working_ = false;
    message_ = std::move(message);
    changed_.emit();
}

void ImportView::endRefused(const Source& source) {
    refused_ = source;
    end(
        tr("macOS didn't let Orvu read {1}'s data. Allow it when macOS asks, or turn on Orvu under "
           "Full Disk Access, then import again.",
           source.name));
}

int ImportView::merge(const std::vector<BookmarkStore::Entry>& entries) const {
    return isProfileGone() ? 0 : services_.bookmarks().store(profile_).add(entries);
}

int ImportView::merge(const std::vector<Visit>& visits) const {
    if (isProfileGone()) return 0;
    return BrowserStore::importVisits(visits, profile_, services_.platform().defaults,
                                      services_.notifications());
}

Task<void> ImportView::read(View view, Source source) {
    BrowserImporter::Request request{.bookmarks = view->bookmarks.get(),
                                     .history = view->history.get(),
                                     .now = view->services_.platform().loop.now(),
                                     .calendar = view->services_.platform().calendar};
    view->begin();
    auto reading = view->services_.platform().background.run<ImportResult>(
        [importer = view->importer_, source, request] { return importer.read(source, request); },
        {});
    const ImportResult result = co_await reading;
    if (result.blocked) {
        view->endRefused(source);
        co_return;
    }
    Brought brought;
    if (request.bookmarks) brought.bookmarks = view->merge(result.bookmarks);
    if (request.history) brought.visits = view->merge(result.visits);
    view->end(sentence(brought, source.name));
}

Task<void> ImportView::choose() {
    auto choice = openPanel_.chooseHtml(fileMessage);
    const auto file = co_await choice;
    if (file && !working_) reads_.start(readFile(shared_from_this(), *file));
}

Task<void> ImportView::readFile(View view, std::filesystem::path file) {
    view->begin();
    using Entries = std::vector<BookmarkStore::Entry>;
    auto reading = view->services_.platform().background.run<Entries>(
        [importer = view->importer_, file] { return importer.readHTML(file); }, {});
    const Entries entries = co_await reading;
    const int count = view->merge(entries);
    view->end(count > 0 ? trn("Added {1} bookmarks.", "Added {1} bookmarks.", count)
                        : std::string{phrase("No new bookmarks in that file.")});
}

}  // namespace orvu
