#include "import/formats/ChromiumBookmarks.h"

#include "foundation/json/Json.h"
#include "import/formats/ImportedPage.h"

#include <ranges>

namespace orvu {
namespace {

std::optional<std::string_view> textOf(const JsonValue& node, std::string_view name) {
    return node.field(name).and_then(&JsonValue::text);
}

std::optional<BookmarkStore::Entry> entryOf(const JsonValue& node) {
    if (textOf(node, "type") != "url") return std::nullopt;
    const auto address = textOf(node, "url");
    auto url = address ? webBookmark(*address) : std::nullopt;
    if (!url) return std::nullopt;
    std::string title = importedTitle(textOf(node, "name").value_or(*address));
    return BookmarkStore::Entry{std::move(*url), std::move(title)};
}

/// Adds the bookmarks below `root`, a folder before what follows it.
void walk(const JsonValue& root, std::vector<BookmarkStore::Entry>& found) {
    std::vector<JsonValue> waiting{root};  // the next one last
    while (!waiting.empty()) {
        const JsonValue node = waiting.back();
        waiting.pop_back();
        if (!node.isObject()) continue;
        if (auto entry = entryOf(node)) found.push_back(std::move(*entry));
        const auto children = node.field("children").and_then(&JsonValue::array);
        if (!children) continue;
        for (const JsonValue& child : *children | std::views::reverse) waiting.push_back(child);
    }
}

}  // namespace

std::vector<BookmarkStore::Entry> chromiumBookmarks(std::string_view json) {
    std::vector<BookmarkStore::Entry> found;
    const auto document = JsonDocument::parse(json);
    const auto roots = document ? document->root().field("roots") : std::nullopt;
    if (!roots) return found;
    for (const char* const name : {"bookmark_bar", "other", "synced"}) {
        if (const auto root = roots->field(name)) walk(*root, found);
    }
    return found;
}

}  // namespace orvu
