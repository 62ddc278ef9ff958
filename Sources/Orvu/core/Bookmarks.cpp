#include "core/Bookmarks.h"

#include "core/Records.h"
#include "foundation/text/Text.h"
#include "platform/StoredRecords.h"

#include <algorithm>
#include <unordered_set>

namespace orvu {

std::optional<BookmarkStore::Bookmark> BookmarkStore::Bookmark::decode(const JsonValue& value) {
    return decodeDatedPage<Bookmark>(value);
}

void BookmarkStore::Bookmark::encode(JsonWriter& writer) const { encodeDatedPage(writer, *this); }

BookmarkStore::BookmarkStore(UserDefaults& defaults, const MainLoop& clock, std::string key)
    : defaults_(defaults),
      clock_(clock),
      key_(std::move(key)),
      items_(readRecords<Bookmark>(defaults_, key_).value_or(std::vector<Bookmark>{})) {}

bool BookmarkStore::contains(const std::optional<Url>& url) const {
    return url && std::ranges::find(items_, *url, &Bookmark::url) != items_.end();
}

std::vector<BookmarkStore::Bookmark> BookmarkStore::matching(std::string_view query) const {
    const std::string searched = lowercased(query);
    if (searched.empty()) return items_;
    std::vector<Bookmark> result;
    std::ranges::copy_if(items_, std::back_inserter(result), [&](const Bookmark& item) {
        return containsCharacters(lowercased(item.title), searched) ||
               lowercased(item.url.absoluteString()).contains(searched);
    });
    return result;
}

void BookmarkStore::toggle(const std::optional<Url>& url, std::string_view title) {
    if (!url || !isWebUrl(*url) || !canBeStored(*url)) return;
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
        if (!canBeStored(url) || !known.insert(url).second) continue;
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
    if (isSaved_) writeRecords(defaults_, key_, items_);
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

void BookmarkStores::profileRemoved(const Uuid& id) {
    const auto found = stores_.find(id);
    if (found != stores_.end()) found->second->keepInMemory();
}

}  // namespace orvu
