#include "core/AppServices.h"

#include "search/SearchSuggester.h"

#include <memory>
#include <utility>

namespace orvu {

AppServices::AppServices(const Platform& platform)
    : platform_(platform),
      settings_(platform.defaults),
      profiles_(platform.defaults,
                [this](const Uuid& id) {
                    bookmarks_.profileRemoved(id);
                    platform_.engine.removeDataStore(id);
                }),
      bookmarks_(platform.defaults, platform.loop),
      favicons_(platform.iconRequests, platform.images, platform.files,
                platform.paths.data / "Favicons"),
      permissions_(platform.defaults),
      trackers_(platform.ruleLists),
      readerLook_(settings_),
      downloads_(platform.downloadFolder, platform.workspace) {
    platform.engine.onDownload = [this](std::unique_ptr<Download> download) {
        downloads_.add(std::move(download));
    };
    // Long before the first page asks for anything.
    if (settings_.blockTrackers.get()) trackers_.prepare();
}

std::unique_ptr<Suggestions> AppServices::makeSuggestions() {
    return std::make_unique<SearchSuggester>(platform_.suggestionRequests, platform_.loop,
                                             settings_, platform_.locale.preferredLanguages());
}

AppServices::~AppServices() { platform_.engine.onDownload = nullptr; }

}  // namespace orvu
