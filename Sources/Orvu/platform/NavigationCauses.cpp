#include "platform/NavigationCauses.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace orvu {
namespace {

/// A fragment is not sent, and the engine may leave it out of what it tells of a download.
std::size_t addressOf(const Url& url) {
    const std::string_view text = url.absoluteString();
    return std::hash<std::string_view>{}(text.substr(0, text.find('#')));
}

}  // namespace

void NavigationCauses::add(const Url& url, DownloadCause cause) {
    entries_.push_front({addressOf(url), cause});
    if (entries_.size() > limit) entries_.pop_back();
}

DownloadCause NavigationCauses::cause(const Url& url) const {
    const auto found = std::ranges::find(entries_, addressOf(url), &Entry::address);
    return found != entries_.end() ? found->cause : DownloadCause::page;
}

}  // namespace orvu
