#include "search/answers/ResultsPage.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"

#include <utility>

namespace orvu {
namespace {

using Entry = std::vector<JsonValue>;

/// The head of `text` that has at most `units` units of UTF-16, without half a character.
std::string_view firstUnits(std::string_view text, std::size_t units) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); end = at) {
        const std::size_t taken = nextCodePoint(text, at) > 0xFFFF ? 2 : 1;
        if (taken > units) break;
        units -= taken;
    }
    return text.substr(0, end);
}

/// The lists in an answer; nothing if it holds anything else.
std::optional<std::vector<Entry>> readEntries(const JsonValue& answer) {
    const auto values = answer.array();
    if (!values) return std::nullopt;
    std::vector<Entry> entries;
    for (const JsonValue& value : *values) {
        auto entry = value.array();
        if (!entry) return std::nullopt;
        entries.push_back(std::move(*entry));
    }
    return entries;
}

std::optional<FoundResult> readResult(const Entry& entry) {
    if (entry.size() < 3) return std::nullopt;
    const auto title = entry[0].text();
    auto url = entry[1].url();
    if (!title || title->empty() || !url) return std::nullopt;
    const std::string_view snippet = entry[2].text().value_or("");
    return FoundResult{std::string{firstUnits(*title, ResultsPage::maxTitle)}, std::move(*url),
                       std::string{firstUnits(snippet, ResultsPage::maxSnippet)},
                       entry.size() > 3 ? entry[3].url() : std::nullopt};
}

}  // namespace

const std::string_view ResultsPage::script =
#include "search/answers/ResultsScript.inc"
    ;

std::vector<FoundResult> ResultsPage::results(const ScriptResult& answer) {
    if (answer.kind != ScriptResult::Kind::json) return {};
    const auto document = JsonDocument::parse(answer.text);
    const auto entries = document ? readEntries(document->root()) : std::nullopt;
    if (!entries) return {};
    std::vector<FoundResult> found;
    for (const Entry& entry : *entries) {
        if (found.size() == maxResults) break;
        if (auto result = readResult(entry)) found.push_back(std::move(*result));
    }
    return found;
}

}  // namespace orvu
