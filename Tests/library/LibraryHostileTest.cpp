#include "foundation/text/Text.h"
#include "library/LibraryWorld.h"
#include "look/text/TextDirection.h"

#include <limits>

namespace orvu {
namespace {

using LibraryHostileTest = LibraryTest;

TEST_F(LibraryHostileTest, ATitleIsOneLineOfAtMostThreeHundredCharacters) {
    const auto store = openLibrary({titled("a\nb\r\nc\x01" + repeated("ä", 1000), noon())});
    LibraryView view{*store, world.services};

    const auto row = view.row(view.entries().at(1));

    ASSERT_TRUE(row);
    EXPECT_TRUE(row->title.starts_with("a b c ä")) << row->title;
    EXPECT_TRUE(row->title.ends_with("ä…"));
    EXPECT_EQ(characterCount(row->title), 300U);
}

TEST_F(LibraryHostileTest, ATitleWithoutASignIsTheNameOfTheSite) {
    const auto store = openLibrary({titled("", noon(), "https://www.a.example/x"),
                                    titled(" \n\t", noon(), "https://b.example/x"),
                                    titled("", noon(), "about:blank")});
    LibraryView view{*store, world.services};

    EXPECT_EQ(lines(view), (Strings{"[Today]", "a.example", "b.example", ""}));
    EXPECT_EQ(view.row(view.entries()[2])->accessibleName(), "b.example, 12:00");
    EXPECT_EQ(view.row(view.entries()[3])->host, "");
}

TEST_F(LibraryHostileTest, ATitleThatTurnsTheDirectionStaysInItsOwnText) {
    const auto store = openLibrary({titled("\u202Emoc.knab", noon(), "https://evil.example/"),
                                    titled("שלום world", noon(), b)});
    LibraryView view{*store, world.services};

    const auto turned = view.row(view.entries().at(1));
    const auto hebrew = view.row(view.entries().at(2));

    EXPECT_EQ(turned->host, "evil.example");
    EXPECT_EQ(turned->time, "12:00");
    EXPECT_TRUE(runsLeftwards(hebrew->title));
}

TEST_F(LibraryHostileTest, AHostThatLooksLikeAnotherShowsItsLettersInTheAlphabetOfServers) {
    const auto store = openLibrary({titled("Bank", noon(), "https://xn--pple-43d.com/")});
    LibraryView view{*store, world.services};

    EXPECT_EQ(view.row(view.entries().at(1))->host, "xn--pple-43d.com");
}

TEST_F(LibraryHostileTest, BytesThatAreNoTextAreSearchedAndShownAllTheSame) {
    RandomText random{93};
    std::vector<Visit> visits;
    for (int i = 0; i < 200; ++i) visits.push_back(titled(random.text(9), noon()));
    const auto store = openLibrary(visits);
    LibraryView view{*store, world.services};

    for (int i = 0; i < 200; ++i) {
        view.query.set(i % 2 == 0 ? random.bytes(4) : random.text(2));
        for (const auto& entry : view.entries()) {
            if (entry.isHeader()) continue;
            const auto row = view.row(entry);
            ASSERT_TRUE(row);
            EXPECT_TRUE(isWellFormed(row->title));
            EXPECT_EQ(row->title.find_first_of("\r\n"), std::string::npos);
        }
    }
}

TEST_F(LibraryHostileTest, ASearchThatIsLongerThanAnyTextFindsNothing) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};

    for (const auto* piece : {"a", "\u0301", "👩‍👩‍👧"}) {
        view.query.set(repeated(piece, 200'000));
        EXPECT_EQ(lines(view), Strings{});
    }
}

TEST_F(LibraryHostileTest, DatesBeyondTheCalendarHaveARowAndAHeaderAllTheSame) {
    constexpr double most = std::numeric_limits<double>::max();
    const std::vector<Visit> visits{titled("A", Date{1e18}), titled("B", Date{-1e18}),
                                    titled("C", Date{most}), titled("D", Date{-most}),
                                    titled("E", Date{1e18})};

    const auto entries = entriesByDay(visits, {0, 1, 2, 3, 4}, Calendar{"Europe/Berlin"});

    const auto rows =
        std::ranges::count_if(entries, [](const LibraryEntry& entry) { return !entry.isHeader(); });
    EXPECT_EQ(rows, 5);
    EXPECT_TRUE(entries.front().isHeader());
}

TEST_F(LibraryHostileTest, AnIdentityThatIsStoredTwiceHasTwoRows) {
    Visit first = titled("Tulips", noon());
    Visit second = titled("Roses", noon(), b);
    second.id = first.id;
    const auto store = openLibrary({first, second});
    LibraryView view{*store, world.services};

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips", "Roses"}));
    view.query.set("rose");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Roses"}));
    view.query.set("tulip");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips"}));
}

TEST_F(LibraryHostileTest, AnAddressThatIsNoWebAddressIsShownAndCopied) {
    const auto store = openLibrary({titled("Local", noon(), "file:///etc/passwd")});
    LibraryView view{*store, world.services};

    view.copyLink(entryOf(view, "Local"));

    EXPECT_EQ(world.pasteboard.text, "file:///etc/passwd");
}

}  // namespace
}  // namespace orvu
