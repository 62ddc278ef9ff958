#include "import/Importer.h"

#include "import/formats/BookmarksHtml.h"
#include "import/KnownBrowsers.h"
#include "import/ProfileSearch.h"
#include "import/readers/ImportRead.h"

#include <algorithm>

namespace orvu {
namespace {

using Path = std::filesystem::path;
using Access = ForeignFiles::Access;
using Request = BrowserImporter::Request;

constexpr std::size_t longestHtml = 256 << 20;  // bytes
constexpr std::chrono::seconds htmlPatience{30};

ImportSource sourceIn(const Path& folder, const KnownBrowser& browser) {
    return {.id = std::string{browser.id},
            .name = std::string{browser.name},
            .host = std::string{browser.host},
            .kind = browser.kind,
            .folder = folder};
}

/// Where this browser is installed it is listed also while its files are refused, since a person
/// can mend that.
std::optional<ImportSource> safari(const KnownBrowser& browser, const ForeignFiles& files,
                                   const ImportFolders& folders) {
    if (!files.isFolder(folders.applications / "Safari.app")) return std::nullopt;
    auto source = sourceIn(folders.home / browser.homeFolder, browser);
    source.needsAccess = files.access(source.folder / probeFile(source.kind)) != Access::readable;
    return source;
}

std::optional<ImportSource> sourceOf(const KnownBrowser& browser, const ForeignFiles& files,
                                     const ImportFolders& folders) {
    if (browser.kind == BrowserKind::safari) return safari(browser, files, folders);
    const auto folder = newestProfile(files, browser.bases(folders), browser.kind);
    return folder ? std::optional{sourceIn(*folder, browser)} : std::nullopt;
}

/// Whether the system refuses what is to be read. The file of the history is always asked: one in
/// which nothing is to be seen was never in use.
bool isBlocked(const ForeignFiles& files, const ImportSource& source, const Request& request) {
    const auto probe = files.access(source.folder / probeFile(source.kind));
    if (probe == Access::refused || probe == Access::empty) return true;
    return request.bookmarks &&
           std::ranges::any_of(profileFiles(source.kind), [&](std::string_view name) {
               return files.access(source.folder / name) == Access::refused;
           });
}

void readKind(BrowserKind kind, const ImportRead& read, ImportResult& result) {
    switch (kind) {
        case BrowserKind::chromium:
            return readChromium(read, result);
        case BrowserKind::firefox:
            return readFirefox(read, result);
        case BrowserKind::safari:
            return readSafari(read, result);
        case BrowserKind::gnomeWeb:
            return readGnomeWeb(read, result);
    }
}

}  // namespace

std::vector<ImportSource> BrowserImporter::sources() const {
    std::vector<ImportSource> result;
    for (const KnownBrowser& browser : KnownBrowser::all()) {
        if (auto source = sourceOf(browser, *files_, folders_))
            result.push_back(std::move(*source));
    }
    return result;
}

ImportResult BrowserImporter::read(const Source& source, const Request& request) const {
    ImportResult result;
    if (isBlocked(*files_, source, request)) {
        result.blocked = true;
        return result;
    }
    const auto cut = request.calendar.addingDays(-days, request.now);
    readKind(source.kind,
             {.files = *files_,
              .folder = source.folder,
              .bookmarks = request.bookmarks,
              .history = request.history,
              .cut = cut.value_or(Date::distantPast()),
              .deadline = std::chrono::steady_clock::now() + request.patience},
             result);
    return result;
}

std::vector<BookmarkStore::Entry> BrowserImporter::readHTML(const Path& file) const {
    const auto deadline = std::chrono::steady_clock::now() + htmlPatience;
    return bookmarksInHtml(files_->text(file, longestHtml, deadline).value_or(""));
}

}  // namespace orvu
