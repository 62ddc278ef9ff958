#pragma once

#include "core/BrowserStore.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// An address that is known to parse.
[[nodiscard]] inline Url url(std::string_view text) { return Url::parse(text).value(); }

/// The fake page behind a tab.
[[nodiscard]] inline FakeWebView& page(BrowserTab& tab) {
    return dynamic_cast<FakeWebView&>(tab.webView());
}

/// The addresses of tabs, in order; an empty text for a tab without one.
[[nodiscard]] inline std::vector<std::string> addresses(const BrowserStore::TabList& tabs) {
    std::vector<std::string> result;
    for (const auto& tab : tabs) {
        result.push_back(tab->url() ? tab->url()->absoluteString() : "");
    }
    return result;
}

/// The addresses of records that have one, in order.
template <class Record>
[[nodiscard]] std::vector<std::string> addresses(const std::vector<Record>& records) {
    std::vector<std::string> result;
    for (const auto& record : records) result.push_back(record.url.absoluteString());
    return result;
}

/// Counts the change signals of a store from its making on.
class ChangeCounter {
public:
    template <class Store>
    explicit ChangeCounter(Store& store)
        : connection_(store.connectChanged([this] { ++count_; })) {}
    ChangeCounter(const ChangeCounter&) = delete;
    ChangeCounter& operator=(const ChangeCounter&) = delete;
    [[nodiscard]] int count() const { return count_; }

private:
    int count_ = 0;
    ScopedConnection connection_;
};

/// All that browser stores stand on, in memory, with a clock that stands still.
struct StoreWorld : FakeDesktop {
    AppServices services{platform()};
    NotificationCenter& notifications = services.notifications();
    BookmarkStores& bookmarks = services.bookmarks();
    FakeHttpSession& http = iconRequests;
    FaviconStore& favicons = services.favicons();
    SitePermissions& permissions = services.permissions();
    Profile work{*Uuid::parse("11111111-2222-3333-4444-555555555555"), "Work", "bag", 1};

    /// The data stored under `key`; empty if there are none.
    [[nodiscard]] std::string stored(std::string_view key) const {
        return defaults.data(key).value_or("");
    }
    /// Stores data as a previous run left them, without a trace in `defaults.written`.
    void store(std::string_view key, std::string bytes) {
        defaults.values.insert_or_assign(std::string{key},
                                         FakeUserDefaults::Data{std::move(bytes)});
    }
    template <class Record>
    void storeRecords(std::string_view key, const std::vector<Record>& records) {
        store(key, encodeRecords(records).value());
    }
    /// What is stored under `key`, decoded; nothing if it does not parse.
    template <class Record>
    [[nodiscard]] std::optional<std::vector<Record>> storedRecords(std::string_view key) const {
        return decodeRecords<Record>(stored(key));
    }
};

/// A fixture with a world, and makers of the windows' stores in it.
class StoreTest : public testing::Test {
protected:
    using NewTab = BrowserStore::NewTab;
    using Select = BrowserStore::Select;
    using Strings = std::vector<std::string>;

    [[nodiscard]] std::unique_ptr<BrowserStore> openStore() {
        return std::make_unique<BrowserStore>(world.services, false, Profile::personal());
    }
    [[nodiscard]] std::unique_ptr<BrowserStore> openPrivateStore() {
        return std::make_unique<BrowserStore>(world.services, true, Profile::personal());
    }
    /// A store whose tabs are exactly these pages; the last one is in front.
    [[nodiscard]] std::unique_ptr<BrowserStore> openStoreWith(const Strings& pages) {
        auto store = openStore();
        const auto empty = store->active();
        for (const auto& text : pages) store->newTab(url(text), Select::yes);
        store->close(*empty);
        world.defaults.written.clear();
        return store;
    }
    /// The tab that shows `address`. There must be one.
    [[nodiscard]] static std::shared_ptr<BrowserTab> tabAt(const BrowserStore& store,
                                                           std::string_view address) {
        for (const auto& tab : store.tabs()) {
            if (tab->url() && tab->url()->absoluteString() == address) return tab;
        }
        ADD_FAILURE() << "no tab shows " << address;
        return nullptr;
    }
    /// An address of its own for each number: "https://7.example/".
    [[nodiscard]] static std::string numbered(int number) {
        return std::string{"https://"}.append(std::to_string(number)).append(".example/");
    }
    /// The address of the tab in front.
    [[nodiscard]] static std::string front(const BrowserStore& store) {
        return addresses({store.active()}).front();
    }
    /// Lets a page finish loading, so that it becomes a visit.
    static void visit(BrowserTab& tab, std::string_view address, const std::string& title = "") {
        page(tab).load(url(address));
        page(tab).finish(title);
    }

    StoreWorld world;

    static constexpr auto a = "https://a.example/";
    static constexpr auto b = "https://b.example/";
    static constexpr auto c = "https://c.example/";
    static constexpr auto d = "https://d.example/";
};

}  // namespace orvu
