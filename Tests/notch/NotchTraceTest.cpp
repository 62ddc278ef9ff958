#include "core/AddressResolution.h"
#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "support/NotchBodyWorld.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

namespace orvu {
namespace {

/// What the window did, in words, and what a row promised in the same words.
std::string goes(const std::optional<Url>& url) {
    return url ? "goes to " + url->absoluteString() : "does nothing";
}

/// A person at the notch who presses any key at any moment, while answers come late and in any
/// order and the history changes underneath.
class NotchTraceTest : public NotchBodyTest {
protected:
    static constexpr std::array<std::string_view, 10> sites{
        "https://bees.example/dance",    "https://www.beech.example/",
        "https://be.example/maps",       "https://maps.example/bees",
        "http://Trees.example/be?a=b",   "https://www.google.com/search?q=bee+dance",
        "https://duckduckgo.com/?q=Bee", "https://www.bing.com/search?q=bees%20at%20home",
        "https://b\u00E9.example/",      "https://maps.example/"};
    static constexpr std::array<std::string_view, 12> letters{
        "b", "e", "s", "m", "a", " ", ".", "B", "!w ", "\u00E9", "e\u0301", "/"};
    static constexpr std::array<std::string_view, 7> offers{
        "bees", "bee dance", "BEE dance", "bees at home", "maps of bees", "bee\u0301", "best maps"};

    Url anySite() { return url(sites[random.below(sites.size())]); }

    void newWorld() {
        body.reset();
        notch.close();
        store.reset();
        world.defaults.values.clear();
        store = openStore();
        recordsChange = store->connectChanged([this] { hasNewRecords = true; });
        bookmarksChange = store->bookmarks().connectChanged([this] { hasNewRecords = true; });
        for (std::size_t left = random.below(12); left > 0; --left) {
            const std::string title{offers[random.below(offers.size())]};
            visit(*store->active(), anySite().absoluteString(), title);
            if (random.below(3) == 0) store->newTab(std::nullopt, Select::yes);
            if (random.below(4) == 0) store->bookmarks().toggle(anySite(), title);
        }
        makeBody(world.services.makeSuggestions());
        show();
    }

    /// The view draws: it follows the tab in front and takes over what changed.
    void draw() {
        if (body->tab() != store->active()) {
            body.reset();
            makeBody(world.services.makeSuggestions());
            body->setCaretAtEnd(true);
        }
        body->refresh();
        show();
    }
    /// Notes what stands on the screen: all of a row but its action, and what it promises.
    void show() {
        rememberRecords();
        promise = notch.isOpen() ? promised() : "";
        checkShown();
    }

    /// What the highlighted row says that Return will do.
    [[nodiscard]] std::string promised() const {
        if (body->selection() >= 0) {
            return promiseOf(body->entries()[static_cast<std::size_t>(body->selection())]);
        }
        const auto& candidates = body->candidates();
        const std::string& title = candidates.primaryTitle();
        if (candidates.primarySubtitle() == "You've been here before") {
            return "goes to https://" + title.substr(std::string_view{"Go to "}.size());
        }
        const std::string typed{trimmed(body->query(), TrimSet::whitespaces)};
        const auto bang = Bang::parse(body->query());
        if (bang) {
            EXPECT_EQ(title,
                      "Search " + std::string{bang->bang.name} + " for “" + bang->query + "”");
        } else if (candidates.primarySubtitle() == "Open the site") {
            EXPECT_EQ(title, "Go to " + typed);
        } else {
            EXPECT_EQ(title, "Search “" + typed + "”");
        }
        return typed.empty() ? "does nothing" : goes(resolveAddress(body->query(), settings));
    }
    [[nodiscard]] std::string promiseOf(const Entry& entry) const {
        const auto bang = Bang::parse(body->query());
        const std::string prefix = bang ? std::string{bang->bang.key} + " " : "";
        const std::string identifier = entry.id.substr(1);
        switch (entry.id.front()) {
            case 'r':
            case 'p':
                return goes(resolveAddress(prefix + entry.typed + entry.rest, settings));
            case 't':
                return "shows tab " + identifier;
            default: {
                const auto found = addresses.find(identifier);
                return found == addresses.end() ? "a record that never was"
                                                : "goes to " + found->second;
            }
        }
    }
    /// A row may stand for a record that was deleted after the row was drawn.
    void rememberRecords() {
        if (!std::exchange(hasNewRecords, false)) return;
        for (const auto& each : store->visits()) {
            addresses[each.id.string()] = each.url.absoluteString();
        }
        for (const auto& each : store->bookmarks().items()) {
            addresses[each.id.string()] = each.url.absoluteString();
        }
    }

    void checkShown() {
        ASSERT_GE(body->selection(), AddressNotchBody::noSelection);
        ASSERT_LT(body->selection(), static_cast<int>(body->entries().size()));
        std::set<std::string> ids;
        for (const Entry& entry : body->entries()) ids.insert(entry.id);
        ASSERT_EQ(ids.size(), body->entries().size());
        ASSERT_LE(body->entries().size(), 13U);
        checkGhost();
    }
    /// A completion makes the text into a known candidate, whatever the case of its letters.
    void checkGhost() {
        const std::string ghost = body->ghost();
        if (ghost.empty()) return;
        const auto& candidates = body->candidates();
        Strings known = candidates.recentSearches();
        if (candidates.topHit()) known.push_back(*candidates.topHit());
        for (const Entry& entry : body->entries()) {
            if (entry.id.front() == 'p') known.push_back(entry.typed + entry.rest);
        }
        const std::string typed = lowercased(body->query());
        ASSERT_TRUE(std::ranges::any_of(
            known,
            [&](const std::string& each) {
                return beginsWithCharacters(lowercased(each), typed) && each.ends_with(ghost) &&
                       characterCount(each) == characterCount(typed) + characterCount(ghost);
            }))
            << body->query() << "|" << ghost;
    }

    /// Presses Return, and compares what happens with what stood on the screen.
    void pressReturn() {
        if (!notch.isOpen()) return;
        const auto front = store->active();
        page(*front).calls.clear();
        const std::string expected = promise;
        const bool blank =
            body->selection() < 0 && trimmed(body->query(), TrimSet::whitespaces).empty();

        ASSERT_TRUE(body->press(NotchKey::enter));

        std::string happened = "does nothing";
        if (store->active() != front) happened = "shows tab " + store->active()->id().string();
        for (const std::string& call : page(*front).calls) {
            if (call.starts_with("load ")) happened = "goes to " + call.substr(5);
        }
        const bool closesAlone = expected.starts_with("shows tab ") && happened == "does nothing";
        // A tab that has closed since, or is in front by now, can't be shown any more.
        if (!closesAlone) {
            ASSERT_EQ(happened, expected) << body->query();
        }
        ASSERT_EQ(notch.isOpen(), blank);
    }

    void pressAnyKey() {
        if (!notch.isOpen()) {
            notch.open(random.below(2) == 0 ? anySite().absoluteString() : "");
            if (random.below(2) == 0) body->setCaretAtEnd(random.below(2) == 0);
            return show();
        }
        switch (random.below(9)) {
            case 0:
                static_cast<void>(body->press(NotchKey::escape));
                break;
            case 1:
            case 2:
                static_cast<void>(body->press(NotchKey::downArrow));
                break;
            case 3:
                static_cast<void>(body->press(NotchKey::upArrow));
                break;
            case 4:
                static_cast<void>(
                    body->press(random.below(2) == 0 ? NotchKey::tab : NotchKey::rightArrow));
                break;
            case 5: {
                const auto kept = characterCount(notch.query()) / 2;
                notch.setQuery(std::string{firstCharacters(notch.query(), kept)});
                break;
            }
            case 6:
                if (random.below(4) == 0) return notch.setQuery(random.text(12)), show();
                [[fallthrough]];
            default:
                notch.setQuery(notch.query() + std::string{letters[random.below(letters.size())]});
        }
        body->setCaretAtEnd(random.below(8) != 0);
        show();  // a key of the person's own shows at once
    }

    /// Something that is not a key; the screen stays as it is until it is drawn again.
    void changeUnderneath() {
        rememberRecords();
        switch (random.below(8)) {
            case 0:
                store->newTab(anySite(), random.below(3) == 0 ? Select::yes : Select::no);
                break;
            case 1:
                store->close(*store->tabs()[random.below(store->tabs().size())]);
                break;
            case 2:
                visit(*store->tabs()[random.below(store->tabs().size())],
                      anySite().absoluteString(), "bees");
                break;
            case 3:
                store->bookmarks().toggle(anySite(), "best");
                break;
            case 4:
                store->clearHistory(random.below(2) == 0 ? std::nullopt
                                                         : std::optional{world.loop.now()});
                break;
            case 5:
                answerAny();
                break;
            default:
                world.loop.advance(std::chrono::milliseconds{random.below(120)});
        }
    }
    void answerAny() {
        const Strings open = world.suggestionRequests.open();
        if (open.empty()) return;
        const std::string& request = open[random.below(open.size())];
        if (random.below(5) == 0) {
            world.suggestionRequests.fail(request);
            return;
        }
        JsonWriter answer;
        answer.beginArray().value("").beginArray();
        for (std::size_t left = random.below(5); left > 0; --left) {
            answer.value(offers[random.below(offers.size())]);
        }
        answer.endArray().endArray();
        world.suggestionRequests.answer(request, 200, *std::move(answer).finish());
    }

    void checkItCanBeLeft() {
        draw();
        notch.open();
        ASSERT_TRUE(body->press(NotchKey::escape));
        ASSERT_FALSE(notch.isOpen());
        notch.open("");
        type("x");
        ASSERT_EQ(body->query(), "x");
        ASSERT_EQ(body->selection(), AddressNotchBody::noSelection);
        ASSERT_EQ(body->candidates().primaryTitle(), "Search “x”");
        ASSERT_TRUE(body->press(NotchKey::escape));
    }

    RandomText random{20261121};
    bool hasNewRecords = true;
    ScopedConnection recordsChange;
    ScopedConnection bookmarksChange;
    std::map<std::string, std::string> addresses;  ///< of all records that ever were
    std::string promise;                           ///< of the row that is highlighted on the screen
};

TEST_F(NotchTraceTest, ReturnDoesWhatTheHighlightedRowSaysOnAnyTraceOfKeysAndAnswers) {
    constexpr int traces = 10'000;
    for (int trace = 0; trace < traces; ++trace) {
        SCOPED_TRACE(trace);
        if (trace % 20 == 0) newWorld();
        for (std::size_t step = 12 + random.below(20); step > 0; --step) {
            const std::size_t what = random.below(10);
            if (what < 5) {
                pressAnyKey();
            } else if (what < 7) {
                changeUnderneath();
            } else if (what < 9) {
                draw();
            } else {
                pressReturn();
            }
            ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
        checkItCanBeLeft();
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

}  // namespace
}  // namespace orvu
