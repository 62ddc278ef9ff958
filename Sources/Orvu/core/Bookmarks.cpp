#include "core/Bookmarks.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <unordered_set>

namespace orvu {

std::optional<BookmarkStore::Bookmark> BookmarkStore::Bookmark::decode(const JsonValue& value) {
    auto id = value.field("id").and_then(&JsonValue::uuid);
    auto url = value.field("url").and_then(&JsonValue::url);
    const auto title = value.field("title").and_then(&JsonValue::text);
    const auto date = value.field("date").and_then(&JsonValue::date);
    if (!id || !url || !title || !date) return std::nullopt;
    return Bookmark{*id, std::move(*url), std::string{*title}, *date};
}

void BookmarkStore::Bookmark::encode(JsonWriter& writer) const {
    writer.beginObject().key("id").value(id).key("url").value(url);
    writer.key("title").value(title).key("date").value(date).endObject();
}

BookmarkStore::BookmarkStore(UserDefaults& defaults, const MainLoop& clock, std::string key)
    : defaults_(defaults), clock_(clock), key_(std::move(key)) {
    if (const auto stored = defaults_.data(key_)) {
        items_ = decodeRecords<Bookmark>(*stored).value_or(std::vector<Bookmark>{});
    }
}

bool BookmarkStore::contains(const std::optional<Url>& url) const {
    return url && std::ranges::find(items_, *url, &Bookmark::url) != items_.end();
}

std::vector<BookmarkStore::Bookmark> BookmarkStore::matching(std::string_view query) const {
    const std::string wanted = lowercased(query);
    if (wanted.empty()) return items_;
    std::vector<Bookmark> result;
    std::ranges::copy_if(items_, std::back_inserter(result), [&](const Bookmark& item) {
        return containsCharacters(lowercased(item.title), wanted) ||
               lowercased(item.url.absoluteString()).contains(wanted);
    });
    return result;
}

void BookmarkStore::toggle(const std::optional<Url>& url, std::string_view title) {
    if (!url || !isWebUrl(*url)) return;
    const auto found = std::ranges::find(items_, *url, &Bookmark::url);
    if (found != items_.end()) {
        items_.erase(found);
    } else {
        items_.insert(items_.begin(), {Uuid::random(), *url, std::string{title}, clock_.now()});
    }
    saveAndEmit();
}

int BookmarkStore::add(const std::vector<Entry>& entries) {
    std::unordered_set<Url> known;
    for (const auto& item : items_) known.insert(item.url);
    int added = 0;
    for (const auto& [url, title] : entries) {
        if (static_cast<std::size_t>(added) == addLimit) break;
        if (!known.insert(url).second) continue;
        items_.push_back({Uuid::random(), url, title, clock_.now()});
        ++added;
    }
    if (added > 0) saveAndEmit();
    return added;
}

void BookmarkStore::remove(const Bookmark& bookmark) {
    const Uuid id = bookmark.id;  // the argument may stand in the list
    if (std::erase_if(items_, [&](const Bookmark& item) { return item.id == id; }) == 0) return;
    saveAndEmit();
}

sigc::connection BookmarkStore::connectChanged(const sigc::slot<void()>& slot) {
    return changed_.connect(slot);
}

void BookmarkStore::saveAndEmit() {
    if (const auto text = encodeRecords(items_)) defaults_.setData(key_, *text);
    changed_.emit();
}

BookmarkStore& BookmarkStores::store(const Profile& profile) {
    auto& store = stores_[profile.id];
    if (!store) {
        store = std::make_unique<BookmarkStore>(
            defaults_, clock_, scopedKey(SettingsKeys::orvuBookmarks.name, profile));
    }
    return *store;
}

}  // namespace orvu
