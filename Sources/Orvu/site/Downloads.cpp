#include "site/Downloads.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

bool isRunning(const std::shared_ptr<DownloadItem>& item) {
    return item->state() == DownloadItem::State::running;
}

}  // namespace

std::shared_ptr<DownloadItem> DownloadStore::running() const {
    const auto found = std::ranges::find_if(items_, isRunning);
    return found != items_.end() ? *found : nullptr;
}

void DownloadStore::add(std::unique_ptr<Download> download) {
    const auto item = std::make_shared<DownloadItem>(
        std::move(download),
        DownloadContext{folder_, workspace_,
                        [this](const std::filesystem::path& file) { return isPromised(file); }});
    item->connectChanged(changed_.make_slot());
    items_.insert(items_.begin(), item);
    changed_.emit();
}

void DownloadStore::clearFinished() {
    const auto previous = items_;  // what goes ends behind the signal
    if (std::erase_if(items_, std::not_fn(isRunning)) > 0) changed_.emit();
}

bool DownloadStore::isPromised(const std::filesystem::path& file) const {
    return std::ranges::any_of(
        items_, [&](const auto& item) { return isRunning(item) && item->fileURL() == file; });
}

}  // namespace orvu
