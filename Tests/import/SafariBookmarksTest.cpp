#include "import/formats/SafariBookmarks.h"

#include "import/formats/PropertyListGuard.h"
#include "import/ImportLines.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace orvu {
namespace {

std::string leaf(const std::string& address, const std::string& rest = "") {
    return "<dict><key>WebBookmarkType</key><string>WebBookmarkTypeLeaf</string>"
           "<key>URLString</key><string>" +
           address + "</string>" + rest + "</dict>";
}
std::string titled(const std::string& address, const std::string& title) {
    return leaf(address, "<key>URIDictionary</key><dict><key>title</key><string>" + title +
                             "</string></dict>");
}
std::string folder(const std::string& children) {
    return "<dict><key>WebBookmarkType</key><string>WebBookmarkTypeList</string>"
           "<key>Children</key><array>" +
           children + "</array></dict>";
}
std::string document(const std::string& root) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>)"
           R"(<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" )"
           R"("http://www.apple.com/DTDs/PropertyList-1.0.dtd"><plist version="1.0">)" +
           root + "</plist>";
}
/// The same in the binary form.
std::string binary(const std::string& xml) {
    plist_t list = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &list);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(list, &bytes, &length);
    std::string result{bytes, length};
    plist_to_bin_free(bytes);
    plist_free(list);
    return result;
}

TEST(SafariBookmarksTest, FoldersAreWalkedInTheirOrderAndNotRecorded) {
    const std::string list = document(folder(
        titled("https://a.example/", "A") +
        folder(titled("https://b.example/", "B") + titled("http://c.example/", "Ü &amp; C")) +
        titled("https://d.example/", "D")));
    const Strings wanted{"https://a.example/ A", "https://b.example/ B", "http://c.example/ Ü & C",
                         "https://d.example/ D"};

    EXPECT_EQ(lines(safariBookmarks(list)), wanted);
    EXPECT_EQ(lines(safariBookmarks(binary(list))), wanted);
}

TEST(SafariBookmarksTest, ABookmarkWithoutATitleHasItsAddressAsTitle) {
    const std::string list = document(
        folder(leaf("https://a.example/") +
               leaf("https://b.example/", "<key>URIDictionary</key><dict></dict>") +
               leaf("https://c.example/", "<key>URIDictionary</key><string>none</string>")));

    EXPECT_EQ(lines(safariBookmarks(list)), (Strings{"https://a.example/ https://a.example/",
                                                     "https://b.example/ https://b.example/",
                                                     "https://c.example/ https://c.example/"}));
}

TEST(SafariBookmarksTest, OtherSchemesAndOtherTypesAreDropped) {
    const std::string list = document(
        folder(leaf("file:///etc/passwd") + leaf("javascript:alert(1)") + leaf("no address") +
               "<dict><key>WebBookmarkType</key><string>WebBookmarkTypeProxy</string>"
               "<key>URLString</key><string>https://p.example/</string></dict>" +
               "<dict><key>WebBookmarkType</key><integer>1</integer></dict>" +
               leaf("HTTPS://a.example/")));

    EXPECT_EQ(lines(safariBookmarks(list)), Strings{"HTTPS://a.example/ HTTPS://a.example/"});
}

TEST(SafariBookmarksTest, WhatIsNoDictionaryHasNoBookmarks) {
    for (const std::string& root :
         {std::string{"<array></array>"}, std::string{"<string>x</string>"},
          std::string{"<array>" + leaf("https://a.example/") + "</array>"}}) {
        EXPECT_EQ(safariBookmarks(document(root)), Entries{}) << root;
    }
    for (const std::string_view bytes : {"", "bplist00", "bplist", "<", "<plist>", "{}"}) {
        EXPECT_EQ(safariBookmarks(bytes), Entries{}) << bytes;
    }
}

TEST(SafariBookmarksTest, ADeepListIsNotRead) {
    std::string deep;
    std::string end;
    for (int i = 0; i < 300'000; ++i) {
        deep += "<array>";
        end += "</array>";
    }
    EXPECT_FALSE(PropertyListGuard::allows(document(deep + end)));
    EXPECT_EQ(safariBookmarks(document(deep + end)), Entries{});
    EXPECT_EQ(safariBookmarks(document(deep)), Entries{});
}

TEST(SafariBookmarksTest, DepthCannotBeHidden) {
    std::string comments;
    std::string attributes;
    for (int i = 0; i < 100'000; ++i) {
        comments += "<array><!--</array>-->";
        attributes += "<array a=\"</array>\">";
    }
    EXPECT_EQ(safariBookmarks(document(comments)), Entries{});
    EXPECT_EQ(safariBookmarks(document(attributes)), Entries{});
}

/// A binary list of arrays, each of which holds the next one so many times.
std::string nested(int levels, int times) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (int i = 0; i < levels; ++i) {
        offsets += static_cast<char>(bytes.size() >> 8U);
        offsets += static_cast<char>(bytes.size() & 0xFFU);
        const bool isLast = i + 1 == levels;
        bytes += static_cast<char>(0xA0 | (isLast ? 0 : times));
        for (int j = 0; !isLast && j < times; ++j) bytes += static_cast<char>(i + 1);
    }
    const std::size_t table = bytes.size();
    bytes += offsets;
    bytes += std::string(6, '\0') + '\x02' + '\x01';
    bytes += std::string(7, '\0') + static_cast<char>(levels);
    bytes += std::string(8, '\0');
    bytes +=
        std::string(6, '\0') + static_cast<char>(table >> 8U) + static_cast<char>(table & 0xFFU);
    return bytes;
}

TEST(SafariBookmarksTest, AListThatWouldGrowWithoutBoundsIsNotRead) {
    EXPECT_TRUE(PropertyListGuard::allows(nested(100, 1)));
    EXPECT_TRUE(PropertyListGuard::allows(nested(10, 2)));
    EXPECT_FALSE(PropertyListGuard::allows(nested(40, 2)));
    EXPECT_EQ(safariBookmarks(nested(40, 2)), Entries{});
    EXPECT_EQ(safariBookmarks(nested(120, 14)), Entries{});
}

TEST(SafariBookmarksTest, AListThatHoldsItselfIsNotRead) {
    std::string self = nested(2, 1);
    self[9] = '\0';  // the top object holds the top object
    EXPECT_FALSE(PropertyListGuard::allows(self));
    EXPECT_EQ(safariBookmarks(self), Entries{});
}

TEST(SafariBookmarksTest, ABinaryListWithAnyByteChangedEndsClearly) {
    const std::string whole = binary(
        document(folder(titled("https://a.example/", "A") + titled("https://b.example/", "B"))));
    RandomText random{7};
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int times = 0; times < 8; ++times) {
            std::string changed = whole;
            changed[at] = static_cast<char>(random.below(256));
            EXPECT_LE(safariBookmarks(changed).size(), 1000U);
        }
        EXPECT_LE(safariBookmarks(whole.substr(0, at)).size(), 2U);
    }
}

TEST(SafariBookmarksTest, TwoThousandBookmarksComeInTheirOrder) {
    std::string children;
    Strings wanted;
    for (int i = 0; i < 2000; ++i) {
        const std::string address = "https://a.example/" + std::to_string(i);
        children += titled(address, "T");
        wanted.push_back(address + " T");
    }
    EXPECT_EQ(lines(safariBookmarks(binary(document(folder(children))))), wanted);
}

}  // namespace
}  // namespace orvu
