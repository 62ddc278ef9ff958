#include "shell/pagearea/LinkAddress.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Text.h"
#include "look/text/OneLine.h"

#include <algorithm>
#include <ranges>
#include <string_view>

namespace orvu {
namespace {

constexpr std::size_t limit = 200;  // characters, and the mark of a cut
/// More of a host would push its end, which tells whose it is, out of a narrow card.
constexpr std::size_t hostLimit = 40;  // characters

std::string endOf(const std::string& host) {
    const auto all = characters(host);
    if (all.size() <= hostLimit) return host;
    std::string shown = "…";
    for (const auto each : all | std::views::drop(all.size() - hostLimit)) shown.append(each);
    return shown;
}

/// The port with its colon, as written; empty without one.
std::string_view portOf(std::string_view authority) {
    const auto colon = authority.rfind(':');
    const bool isPort =
        colon != std::string_view::npos &&
        authority.find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
    return isPort ? authority.substr(colon) : std::string_view{};
}

}  // namespace

std::string linkAddress(const Url& link) {
    const std::string_view text = link.absoluteString();
    const auto host = link.host();
    if (!isWebUrl(link) || !host) return oneLine(text, limit);
    const auto begin = text.find("://") + 3;
    const auto end = std::min(text.find_first_of("/?#", begin), text.size());
    std::string address{text.substr(0, begin)};
    const std::string shown = displayHost(*host);
    address.append(endOf(shown)).append(portOf(text.substr(begin, end - begin)));
    return oneLine(address.append(text.substr(end)), limit);
}

}  // namespace orvu
