#include "import/formats/SafariBookmarks.h"

#include "import/formats/ImportedPage.h"
#include "import/formats/PropertyListGuard.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <ranges>
#include <type_traits>

namespace orvu {
namespace {

struct FreeList {
    void operator()(plist_t list) const { plist_free(list); }
};
using PropertyList = std::unique_ptr<std::remove_pointer_t<plist_t>, FreeList>;

bool isDictionary(plist_t node) { return plist_get_node_type(node) == PLIST_DICT; }

/// What a dictionary has under a name; null if it has nothing, or is none.
plist_t field(plist_t node, const char* name) {
    return isDictionary(node) ? plist_dict_get_item(node, name) : nullptr;
}

std::optional<std::string_view> text(plist_t node) {
    if (!node || plist_get_node_type(node) != PLIST_STRING) return std::nullopt;
    std::uint64_t length = 0;
    const char* const characters = plist_get_string_ptr(node, &length);
    if (!characters) return std::nullopt;
    return std::string_view{characters, length};
}

std::vector<plist_t> itemsOf(plist_t array) {
    std::vector<plist_t> items;
    if (!array || plist_get_node_type(array) != PLIST_ARRAY) return items;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(array, &iterator);
    plist_t item = nullptr;
    for (plist_array_next_item(array, iterator, &item); item;
         plist_array_next_item(array, iterator, &item)) {
        items.push_back(item);
    }
    std::free(iterator);
    return items;
}

std::optional<BookmarkStore::Entry> entryOf(plist_t node) {
    if (text(field(node, "WebBookmarkType")) != "WebBookmarkTypeLeaf") return std::nullopt;
    const auto address = text(field(node, "URLString"));
    auto url = address ? webBookmark(*address) : std::nullopt;
    if (!url) return std::nullopt;
    const auto written = text(field(field(node, "URIDictionary"), "title"));
    return BookmarkStore::Entry{std::move(*url), importedTitle(written.value_or(*address))};
}

}  // namespace

std::vector<BookmarkStore::Entry> safariBookmarks(std::string_view bytes) {
    std::vector<BookmarkStore::Entry> found;
    const bool fits = bytes.size() <= std::numeric_limits<std::uint32_t>::max();
    if (!fits || !PropertyListGuard::allows(bytes)) return found;
    plist_t read = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &read);
    const PropertyList list{read};
    if (!list) return found;
    std::vector<plist_t> waiting{list.get()};  // the next one last
    while (!waiting.empty()) {
        plist_t const node = waiting.back();
        waiting.pop_back();
        if (!isDictionary(node)) continue;
        if (auto entry = entryOf(node)) found.push_back(std::move(*entry));
        for (plist_t const child : itemsOf(field(node, "Children")) | std::views::reverse) {
            waiting.push_back(child);
        }
    }
    return found;
}

}  // namespace orvu
