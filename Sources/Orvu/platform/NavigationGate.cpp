#include "platform/NavigationGate.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace orvu {
namespace {

std::string schemeOf(const Url& url) { return lowercased(url.scheme()); }

/// Scheme, host and port in one text; nothing for an address without a host.
std::optional<std::string> originOf(const Url& url) {
    const std::string text = lowercased(url.absoluteString());
    const auto begin = text.find("://");
    if (begin == std::string::npos || !url.host()) return std::nullopt;
    std::string_view authority{text};
    authority.remove_prefix(begin + 3);
    authority = authority.substr(0, authority.find_first_of("/?#"));
    if (const auto user = authority.rfind('@'); user != authority.npos) {
        authority.remove_prefix(user + 1);
    }
    std::string origin = schemeOf(url);
    const std::string_view standardPort = origin == "https" ? ":443" : ":80";
    if (authority.ends_with(standardPort)) authority.remove_suffix(standardPort.size());
    return origin.append("://").append(authority);
}

/// The origin that made a blob, which its address names behind the scheme.
std::optional<std::string> originOfBlob(const Url& blob) {
    const auto inner = Url::parse(std::string_view{blob.absoluteString()}.substr(5));
    return inner ? originOf(*inner) : std::nullopt;
}

}  // namespace

bool NavigationGate::canLoad(const Url& url) {
    constexpr std::array<std::string_view, 7> schemes{"http", "https", "about",     "file",
                                                      "data", "blob",  "javascript"};
    return std::ranges::find(schemes, schemeOf(url)) != schemes.end();
}

bool NavigationGate::mayOpenElsewhere(const Url& target, const std::optional<Url>& page) {
    if (isWebUrl(target)) return true;
    const std::string scheme = schemeOf(target);
    if (scheme == "about") return lowercased(target.absoluteString()) == "about:blank";
    if (scheme == "file") return page && schemeOf(*page) == "file";
    if (scheme != "blob" || !page) return false;
    const auto origin = originOf(*page);
    return origin && originOfBlob(target) == origin;
}

}  // namespace orvu
