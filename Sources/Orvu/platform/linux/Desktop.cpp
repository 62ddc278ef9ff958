#include "platform/linux/Desktop.h"

#include <utility>

namespace orvu {

Desktop::Desktop(const HttpOptions& iconRequests, const HttpOptions& suggestionRequests,
                 StorageOptions storage)
    : defaults_(paths_.configuration / "UserDefaults.sqlite", std::move(storage)),
      iconRequests_(iconRequests),
      suggestionRequests_(suggestionRequests) {}

Platform Desktop::platform() {
    return {.defaults = defaults_,
            .loop = loop_,
            .activity = activity_,
            .engine = engine_,
            .ruleLists = ruleLists_,
            .iconRequests = iconRequests_,
            .suggestionRequests = suggestionRequests_,
            .pageReads = pageReads_,
            .background = background_,
            .images = images_,
            .model = model_,
            .files = files_,
            .downloadFolder = downloadFolder_,
            .workspace = workspace_,
            .pasteboard = pasteboard_,
            .sound = sound_,
            .paths = paths_,
            .locale = locale_,
            .calendar = calendar_};
}

void Desktop::removeOrphans(const std::vector<Uuid>& profiles) {
    static_cast<void>(tidying_.run<bool>(
        [folder = downloadFolder_.path(), foreign = foreign_] {
            LinuxDownloadFolder::removeLeftovers(folder);
            foreign->removeLeftovers();
            return true;
        },
        false));
    engine_.removeDataStoresExcept(profiles);
}

}  // namespace orvu
