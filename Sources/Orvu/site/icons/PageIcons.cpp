#include "site/icons/PageIcons.h"

#include "foundation/json/Json.h"

#include <algorithm>
#include <optional>
#include <string>

namespace orvu {
namespace {

/// "/favicon.ico", seen from `page`.
std::optional<Url> rootIcon(const Url& page) {
    const std::string& text = page.absoluteString();
    const auto authority = text.find("://");
    if (authority == std::string::npos) return std::nullopt;
    const auto end = std::min(text.find_first_of("/?#", authority + 3), text.size());
    return Url::parse(text.substr(0, end) + "/favicon.ico");
}

std::vector<Url> declared(const ScriptResult& answer) {
    if (answer.kind != ScriptResult::Kind::json) return {};
    const auto document = JsonDocument::parse(answer.text);
    const auto entries = document ? document->root().array() : std::nullopt;
    if (!entries) return {};
    std::vector<Url> links;
    for (const JsonValue& entry : *entries) {
        if (links.size() == PageIcons::limit) break;
        if (const auto link = entry.url()) links.push_back(*link);
    }
    return links;
}

}  // namespace

std::vector<Url> PageIcons::candidates(const ScriptResult& answer, const Url& page) {
    std::vector<Url> urls = declared(answer);
    if (const auto root = rootIcon(page)) urls.push_back(*root);
    return urls;
}

}  // namespace orvu
