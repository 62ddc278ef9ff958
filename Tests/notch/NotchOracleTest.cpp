#include "PlainCandidates.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <utility>

namespace orvu {
namespace {

/// Makes up small profiles and queries out of few pieces, so that much of it matches, repeats
/// itself and stands even.
class RandomNotch {
public:
    explicit RandomNotch(std::uint64_t seed) : random_(seed) {}

    PlainProfile profile() {
        PlainProfile result;
        for (auto left = below(20); left > 0; --left) result.visits.push_back(visit());
        for (auto left = below(6); left > 0; --left) {
            result.bookmarks.push_back({Uuid::random(), address(), text(4), Date{}});
        }
        for (auto left = below(6); left > 0; --left) {
            auto url = chance(4) ? std::nullopt : std::optional{address()};
            result.tabs.push_back({Uuid::random(), text(4), std::move(url)});
        }
        if (!result.tabs.empty() && !chance(4)) {
            result.current = result.tabs[below(result.tabs.size())].id;
        }
        for (const auto& each : result.visits) {
            if (result.today.size() < NotchSnapshot::todayCount && chance(2)) {
                result.today.push_back(each);
            }
        }
        return result;
    }

    /// Changes a profile as a person does: by one more visit, by forgetting some, by an import.
    void change(PlainProfile& profile) {
        auto& visits = profile.visits;
        const auto somewhere = [&] {
            return visits.begin() + static_cast<std::ptrdiff_t>(below(visits.size() + 1));
        };
        switch (below(6)) {
            case 0:
                if (visits.empty()) break;
                visits.erase(visits.begin());
                [[fallthrough]];
            case 1:
                visits.push_back(visit());
                break;
            case 2:
                visits.erase(somewhere(), visits.end());
                break;
            case 3:
                for (auto left = below(4); left > 0; --left) visits.insert(somewhere(), visit());
                break;
            case 4:
                if (!visits.empty()) visits[below(visits.size())].title = text(4);
                break;
            default: {
                auto other = this->profile();
                profile.bookmarks = std::move(other.bookmarks);
                profile.tabs = std::move(other.tabs);
                profile.current = other.current;
            }
        }
    }

    NotchQuestion question() {
        static constexpr std::array engines{Prefs::Engine::google, Prefs::Engine::duckduckgo,
                                            Prefs::Engine::bing, Prefs::Engine::ecosia};
        NotchQuestion result{
            .query = query(),
            .engine = engines[below(engines.size())],
            .suggestionsOn = chance(2),
            .isPrivate = chance(4),
            .shortTime = [](Date date) { return std::to_string(date.secondsSinceReference()); }};
        for (auto left = below(9); left > 0; --left) result.predictions.push_back(text(3));
        return result;
    }

private:
    std::size_t below(std::size_t limit) { return random_.below(limit); }
    bool chance(std::size_t oneIn) { return below(oneIn) == 0; }

    std::string piece() {
        static constexpr std::array<std::string_view, 44> pieces{"a",       "b",
                                                                 "ab",      "ba",
                                                                 "A",       "B",
                                                                 "aB",      "a",
                                                                 "b",       "ab",
                                                                 "ba",      "abba",
                                                                 ".",       " ",
                                                                 "ä",       "Ä",
                                                                 "a\u0308", "\u0308",
                                                                 "\u0323",  "\u0301",
                                                                 "e",       "é",
                                                                 "İ",       "i",
                                                                 "Σ",       "ς",
                                                                 "σ",       "\u212A",
                                                                 "k",       "한",
                                                                 "\u1112",  "\u1161",
                                                                 "\u11AB",  "👩‍👩‍👧",
                                                                 "👩",      "🇩🇪",
                                                                 "\u200D",  "\r\n",
                                                                 "\n",      "\t",
                                                                 "\u05D0",  "\u202E",
                                                                 "\xFF",    "\xC3"};
        if (chance(60)) return std::string{1, '\0'};
        if (chance(200)) return repeated("\u0316\u0301", 40);
        // Half of all pieces are plain letters, or too little would match.
        return std::string{pieces[below(chance(2) ? 12 : pieces.size())]};
    }
    std::string text(std::size_t most) {
        std::string result;
        for (auto left = below(most + 1); left > 0; --left) result += piece();
        return result;
    }

    std::string host() {
        static constexpr std::array<std::string_view, 14> hosts{
            "ab.example",     "abb.example",   "aba.example",    "www.ab.example",
            "www.ba.example", "AB.example",    "WWW.ab.example", "www.www.ab.example",
            "äb.example",     "a%20b.example", "abä.example",    "%C4%B0b.example",
            "ba.example",     "[ab:1]"};
        return std::string{hosts[below(hosts.size())]};
    }
    Url address() {
        static constexpr std::array<std::string_view, 6> searches{
            "https://www.google.com/search?q=",    "https://duckduckgo.com/?q=",
            "https://bing.com/search?x=1&q=",      "https://www.ecosia.org/search?q=",
            "https://www.google.com/searching?q=", "https://www.google.com/maps?q="};
        std::string result;
        if (chance(3)) {
            result = std::string{searches[below(searches.size())]} +
                     percentEncoded(text(3), QueryCharacters::bangQuery);
        } else if (chance(8)) {
            result = chance(2) ? "file:///ab/ba" : "about:ab";
        } else {
            result = "https://" + host() + "/" + (chance(2) ? piece() : "");
        }
        return Url::parse(result).value_or(*Url::parse("https://ab.example/"));
    }
    Visit visit() {
        return {Uuid::random(), address(), text(4), Date{static_cast<double>(below(1000))}};
    }
    std::string query() {
        static constexpr std::array<std::string_view, 12> heads{"!w ",  "!W",   "!zz ", "!yt  ",
                                                                "http", "www.", " ",    "ab",
                                                                "ab.",  "ab.e", "goo",  "\u00A0"};
        std::string result = chance(3) ? std::string{heads[below(heads.size())]} : "";
        result += text(3);
        if (chance(8)) result += chance(2) ? " " : "\t";
        if (chance(100)) result += repeated(piece(), 3000);
        return result;
    }

    RandomText random_;
};

NotchSnapshot& set(NotchSnapshot& snapshot, const PlainProfile& profile) {
    snapshot.setVisits(profile.visits);
    snapshot.setLatestOfToday(profile.today);
    snapshot.setBookmarks(profile.bookmarks);
    snapshot.setTabs(profile.tabs, profile.current);
    return snapshot;
}

void expectSame(const NotchCandidates& found, const PlainCandidates& expected) {
    EXPECT_EQ(found.bang(), expected.bang);
    EXPECT_EQ(found.topHit(), expected.topHit);
    EXPECT_EQ(found.recentSearches(), expected.recentSearches);
    EXPECT_EQ(found.ghost(), expected.ghost);
    EXPECT_EQ(found.entries(), expected.entries);
    EXPECT_EQ(found.primaryTitle(), expected.primaryTitle);
    EXPECT_EQ(found.primarySubtitle(), expected.primarySubtitle);
    EXPECT_EQ(found.primaryHost(), expected.primaryHost);
    EXPECT_EQ(found.primaryAction(), expected.primaryAction);
    EXPECT_EQ(found.askTitle(), expected.askTitle);
    EXPECT_EQ(found.footer(), expected.footer);
}

/// How much the profiles and queries brought to light. Without it, agreeing would mean little.
struct Found {
    int pairs = 0;
    int topHits = 0;
    int recent = 0;
    int ghosts = 0;
    int split = 0;
    int tabs = 0;
    int bookmarks = 0;
    int history = 0;
    int bangs = 0;

    void count(const NotchCandidates& candidates) {
        ++pairs;
        topHits += candidates.topHit() ? 1 : 0;
        recent += candidates.recentSearches().empty() ? 0 : 1;
        ghosts += candidates.ghost().empty() ? 0 : 1;
        bangs += candidates.bang() ? 1 : 0;
        for (const auto& entry : candidates.entries()) {
            split += entry.typed.empty() ? 0 : 1;
            tabs += entry.section == "Open tabs" ? 1 : 0;
            bookmarks += entry.section == "Bookmarks" ? 1 : 0;
            history += entry.section == "History" ? 1 : 0;
        }
    }
};

TEST(NotchOracleTest, FindsWhatThePlainLoopsFind) {
    RandomNotch random{31};
    Found found;
    for (int turn = 0; turn < 3000; ++turn) {
        const auto profile = random.profile();
        NotchSnapshot snapshot;
        set(snapshot, profile);
        for (int query = 0; query < 8 && !testing::Test::HasFailure(); ++query) {
            const auto question = random.question();

            const NotchCandidates candidates{snapshot, question};

            expectSame(candidates, PlainCandidates{profile, question});
            found.count(candidates);
            if (HasFailure()) ADD_FAILURE() << testing::PrintToString(question.query);
        }
    }

    EXPECT_EQ(found.pairs, 24000);
    for (const int count : {found.topHits, found.recent, found.ghosts, found.split, found.tabs,
                            found.bookmarks, found.history, found.bangs}) {
        EXPECT_GT(count, 500);
    }
}

TEST(NotchOracleTest, ASnapshotThatFollowsChangesFindsWhatThePlainLoopsFind) {
    RandomNotch random{32};
    for (int turn = 0; turn < 60; ++turn) {
        auto profile = random.profile();
        NotchSnapshot snapshot;
        for (int change = 0; change < 60 && !testing::Test::HasFailure(); ++change) {
            set(snapshot, profile);
            const auto question = random.question();

            expectSame(NotchCandidates{snapshot, question}, PlainCandidates{profile, question});

            if (HasFailure()) ADD_FAILURE() << testing::PrintToString(question.query);
            random.change(profile);
        }
    }
}

class LongHistoryTest : public testing::Test {
protected:
    LongHistoryTest() {
        while (profile.visits.size() < 300) addSome();
    }
    void addSome() {
        for (auto& visit : random.profile().visits) profile.visits.push_back(std::move(visit));
    }
    void expectSameCandidates() {
        set(snapshot, profile);
        const auto question = random.question();

        expectSame(NotchCandidates{snapshot, question}, PlainCandidates{profile, question});
    }

    RandomNotch random{33};
    RandomText numbers{35};
    PlainProfile profile;
    NotchSnapshot snapshot;
};

TEST_F(LongHistoryTest, IsFollowedWhileItMovesOn) {
    for (int turn = 0; turn < 300 && !HasFailure(); ++turn) {
        addSome();
        const auto over = std::ssize(profile.visits) - 300;
        if (over > 0) profile.visits.erase(profile.visits.begin(), profile.visits.begin() + over);

        expectSameCandidates();
    }
}

TEST_F(LongHistoryTest, IsFollowedThroughLargeChangesInItsMidst) {
    for (int turn = 0; turn < 100 && !HasFailure(); ++turn) {
        const auto before = profile.visits;
        profile.visits.clear();
        const auto keptOfTen = numbers.below(11);
        for (const auto& visit : before) {
            if (numbers.below(10) < keptOfTen) profile.visits.push_back(visit);
            if (numbers.below(10) > keptOfTen) addSome();
            if (profile.visits.size() > 400) break;
        }

        expectSameCandidates();
    }
}

/// Pieces that are pasted a great many times.
class LongQueryTest : public testing::TestWithParam<std::string_view> {};

TEST_P(LongQueryTest, FindsWhatThePlainLoopsFind) {
    RandomNotch random{34};
    const auto profile = random.profile();
    NotchSnapshot snapshot;
    set(snapshot, profile);
    const auto expectSameFor = [&](const std::string& head, std::size_t times) {
        auto question = random.question();
        question.query = head + repeated(GetParam(), times);

        expectSame(NotchCandidates{snapshot, question}, PlainCandidates{profile, question});
    };

    for (const std::string head : {"", "ab", "!w ", " "}) {
        expectSameFor(head, 10);
        expectSameFor(head, 1000);
    }
    expectSameFor("", 100000);
}

INSTANTIATE_TEST_SUITE_P(Odd, LongQueryTest,
                         testing::Values("a", "A", "ä", "\u0301", "\u0316\u0301", "a\u0308", " ",
                                         "\u00A0", "\t", "\r\n", "\u202E", "\u200D", "\u212A", "İ",
                                         "Σ", "👩‍👩‍👧", "🇩", "\xFF", "\x01", ".", "/",
                                         "! "));

}  // namespace
}  // namespace orvu
