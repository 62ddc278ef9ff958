#pragma once

#include "foundation/json/Json.h"
#include "foundation/Signal.h"
#include "platform/MainLoop.h"
#include "platform/UserDefaults.h"
#include "profiles/Profiles.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvu {

/// The bookmarks of one profile: a flat list, the newest toggled first. Two addresses are the
/// same only if their whole texts are. Every change is saved before the signal goes out.
class BookmarkStore {
public:
    struct Bookmark {
        Uuid id;
        Url url;
        std::string title;
        Date date;

        [[nodiscard]] static std::optional<Bookmark> decode(const JsonValue& value);
        void encode(JsonWriter& writer) const;
        friend bool operator==(const Bookmark&, const Bookmark&) = default;
    };
    /// An address and a title to add.
    using Entry = std::pair<Url, std::string>;

    /// How many entries one `add` takes.
    static constexpr std::size_t addLimit = 5000;

    /// Reads the list under `key`; one that does not parse counts as empty. `defaults` and
    /// `clock` must outlive the store.
    BookmarkStore(UserDefaults& defaults, const MainLoop& clock, std::string key);

    [[nodiscard]] const std::vector<Bookmark>& items() const { return items_; }
    [[nodiscard]] bool contains(const std::optional<Url>& url) const;
    /// The bookmarks whose title or address holds `query`, in any case of letters, in list
    /// order; all of them for the empty text.
    [[nodiscard]] std::vector<Bookmark> matching(std::string_view query) const;

    /// Removes the first bookmark of `url`, or puts a new one at the front. Only web addresses
    /// can be bookmarked.
    void toggle(const std::optional<Url>& url, std::string_view title);
    /// Appends the entries whose address is new, the first `addLimit` of them. Gives how many.
    int add(const std::vector<Entry>& entries);
    void remove(const Bookmark& bookmark);
    /// Writes nothing any more, because its profile was deleted.
    void keepInMemory() { isSaved_ = false; }

    sigc::connection connectChanged(const sigc::slot<void()>& slot);

private:
    void saveAndEmit();

    UserDefaults& defaults_;
    const MainLoop& clock_;
    const std::string key_;
    std::vector<Bookmark> items_;
    bool isSaved_ = true;
    sigc::signal<void()> changed_;
};

/// The one bookmark store of each profile, kept for the life of the program.
class BookmarkStores {
public:
    BookmarkStores(UserDefaults& defaults, const MainLoop& clock)
        : defaults_(defaults), clock_(clock) {}

    [[nodiscard]] BookmarkStore& store(const Profile& profile);
    /// The windows that still show it go on with bookmarks in memory.
    void profileRemoved(const Uuid& id);

private:
    UserDefaults& defaults_;
    const MainLoop& clock_;
    std::map<Uuid, std::unique_ptr<BookmarkStore>> stores_;
};

}  // namespace orvu
