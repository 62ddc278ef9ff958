#include "platform/PageMenu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <ranges>

namespace orvu {
namespace {

using Item = PageMenuItem;

std::vector<std::string> titles(const PageMenuPlace& place) {
    std::vector<std::string> all;
    for (const auto& group : pageMenu(place)) {
        for (const auto& entry : group) all.push_back(entry.title);
        all.emplace_back("-");
    }
    all.pop_back();
    return all;
}

using Titles = std::vector<std::string>;

TEST(PageMenu, OfAPageLeadsBackForwardAndAnew) {
    EXPECT_EQ(titles({}), (Titles{"Back", "Forward", "Reload", "-", "Inspect"}));
    const auto menu = pageMenu({.canGoBack = true});
    EXPECT_EQ(menu.front()[0], (PageMenuEntry{Item::goBack, "Back", true}));
    EXPECT_EQ(menu.front()[1], (PageMenuEntry{Item::goForward, "Forward", false}));
}

TEST(PageMenu, OfAPageThatLoadsStopsIt) {
    EXPECT_EQ(titles({.isLoading = true}), (Titles{"Back", "Forward", "Stop", "-", "Inspect"}));
}

TEST(PageMenu, OfALinkOpensCopiesAndSavesIt) {
    EXPECT_EQ(titles({.isLink = true, .opensLink = true}),
              (Titles{"Open in New Tab", "Open in New Private Window", "Copy Link", "Save Link",
                      "-", "Inspect"}));
}

TEST(PageMenu, OfALinkThatNoPageMayOpenOnlyCopiesIt) {
    EXPECT_EQ(titles({.isLink = true}), (Titles{"Copy Link", "-", "Inspect"}));
}

TEST(PageMenu, OfAnImageInALinkTellsTheTwoApart) {
    EXPECT_EQ(titles({.isLink = true, .opensLink = true, .isImage = true, .opensImage = true}),
              (Titles{"Open in New Tab", "Open in New Private Window", "Copy Link", "Save Link",
                      "-", "Open Image in New Tab", "Copy Image", "Save Image", "-", "Inspect"}));
}

TEST(PageMenu, OfAnImageThatIsNoAddressOfTheWebOpensNoTab) {
    EXPECT_EQ(titles({.isImage = true}), (Titles{"Copy Image", "Save Image", "-", "Inspect"}));
}

TEST(PageMenu, OfASelectionCopiesItAndSearchesForIt) {
    EXPECT_EQ(titles({.hasSelection = true, .selection = "garden snail"}),
              (Titles{"Copy", "Search for “garden snail”", "-", "Inspect"}));
}

TEST(PageMenu, OfASelectionWhoseTextNobodyKnowsOnlyCopiesIt) {
    EXPECT_EQ(titles({.hasSelection = true}), (Titles{"Copy", "-", "Inspect"}));
    EXPECT_EQ(titles({.hasSelection = true, .selection = " \n\t"}),
              (Titles{"Copy", "-", "Inspect"}));
}

TEST(PageMenu, OfAFieldEditsFromUndoToSelectAll) {
    EXPECT_EQ(titles({.isEditable = true}),
              (Titles{"", "-", "Undo", "Redo", "-", "Cut", "Copy", "Paste", "Paste as Plain Text",
                      "Delete", "Select All", "-", "Inspect"}));
}

TEST(PageMenu, OfAFieldWithoutASelectionHasNothingToCut) {
    for (const bool selected : {false, true}) {
        for (const auto& group : pageMenu({.isEditable = true, .hasSelection = selected})) {
            for (const auto& entry : group) {
                const bool needsSelection = entry.item == Item::cut || entry.item == Item::copy ||
                                            entry.item == Item::erase;
                EXPECT_EQ(entry.isEnabled, selected || !needsSelection) << entry.title;
            }
        }
    }
}

TEST(PageMenu, OfAFieldSearchesForItsSelectionToo) {
    const auto all = titles({.isEditable = true, .hasSelection = true, .selection = "snail"});
    EXPECT_EQ(std::ranges::count(all, "Search for “snail”"), 1);
    EXPECT_EQ(std::ranges::count(all, "Copy"), 1);
}

TEST(PageMenu, CutsALongSelectionInItsTitleAndNotInItsSearch) {
    const std::string text(40, 'x');
    const auto all = titles({.hasSelection = true, .selection = text});
    EXPECT_EQ(all[1], "Search for “" + std::string(30, 'x') + "…”");
    EXPECT_EQ(searchTextOf(text), text);
}

TEST(PageMenu, SearchesForATextOnOneLine) {
    EXPECT_EQ(searchTextOf("  garden\r\n\tsnail\x01\x7f food\n"), "garden snail food");
    EXPECT_EQ(searchTextOf("\xc2\xa0"), "");
}

TEST(PageMenu, SearchesForAThousandCharactersAtMost) {
    EXPECT_EQ(searchTextOf(std::string(100'000, 'x')).size(), 1000U);
}

TEST(PageMenu, TakesAnySelectionOfAPage) {
    std::mt19937 random{20261122};
    for (int round = 0; round < 500; ++round) {
        std::string text(random() % 80, ' ');
        for (char& byte : text) byte = static_cast<char>(random());
        const std::string searched = searchTextOf(text);
        EXPECT_EQ(searched.find_first_of("\n\r\t"), std::string::npos);
        EXPECT_EQ(searchTextOf(searched), searched);
    }
}

TEST(PageMenu, NeverHasAnEmptyGroupOrALineTwice) {
    for (unsigned bits = 0; bits < 1024; ++bits) {
        const auto has = [bits](unsigned bit) { return (bits >> bit & 1U) != 0; };
        const PageMenuPlace place{has(0), has(1),  has(2), has(3), has(4), has(5),
                                  has(6), "snail", has(7), has(8), has(9)};
        std::vector<Item> seen;
        for (const auto& group : pageMenu(place)) {
            EXPECT_FALSE(group.empty());
            for (const auto& entry : group) seen.push_back(entry.item);
        }
        std::ranges::sort(seen);
        EXPECT_EQ(std::ranges::adjacent_find(seen), seen.end());
        EXPECT_TRUE(std::ranges::binary_search(seen, Item::inspect));
    }
}

}  // namespace
}  // namespace orvu
