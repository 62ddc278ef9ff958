#include "notch/candidates/TopHits.h"

#include "foundation/text/Text.h"

#include <tuple>
#include <utility>

namespace orvu {

void TopHits::insert(Source source, std::size_t place, const std::optional<Url>& url) {
    std::string host = url ? lowercased(url->host().value_or("")) : "";
    if (host.starts_with("www.")) host.erase(0, 4);
    auto known = hosts_.end();
    if (!host.empty()) {
        bool isNew = false;
        std::tie(known, isNew) = hosts_.try_emplace(std::move(host));
        if (isNew) known->second.characters = characterCount(known->first);
        ++known->second.count;
    }
    Places& list = places(source);
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), known);
}

void TopHits::erase(Source source, std::size_t place) {
    Places& list = places(source);
    const auto erased = list.begin() + static_cast<std::ptrdiff_t>(place);
    forget(*erased);
    list.erase(erased);
}

void TopHits::clear(Source source) {
    for (const auto& host : places(source)) forget(host);
    places(source).clear();
}

void TopHits::forget(Hosts::iterator host) {
    if (host != hosts_.end() && --host->second.count == 0) hosts_.erase(host);
}

std::optional<std::string> TopHits::firstMet(const auto& condition) const {
    for (const auto& places : places_) {
        for (const auto& place : places) {
            if (place != hosts_.end() && condition(*place)) return place->first;
        }
    }
    return std::nullopt;
}

std::optional<std::string> TopHits::best(std::string_view typed) const {
    const auto fits = [&](const std::string& host) {
        return host.size() > typed.size() && host.starts_with(typed);
    };
    auto found = hosts_.end();
    bool isTied = false;
    for (auto host = hosts_.upper_bound(typed); host != hosts_.end() && fits(host->first); ++host) {
        if (found == hosts_.end() || host->second.isBetterThan(found->second)) {
            found = host;
            isTied = false;
        } else if (host->second == found->second) {
            isTied = true;
        }
    }
    if (found == hosts_.end()) return std::nullopt;
    if (!isTied) return found->first;
    return firstMet([&](const Hosts::value_type& host) {
        return host.second == found->second && fits(host.first);
    });
}

}  // namespace orvu
