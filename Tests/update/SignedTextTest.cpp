#include "update/SignedText.h"

#include "update/PlainPath.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

const std::string digest(64, 'a');

SignedText ordinary() {
    return {.identity = "app.orvu.Orvu",
            .version = "1.2",
            .build = 12,
            .archiveSize = 5000,
            .archiveHash = digest,
            .files = {{"bin/orvu", true, 100, digest},
                      {"release", false, 40, digest},
                      {"share/a", false, 0, digest}}};
}

/// Whether a text with these files can be read.
bool canBeRead(const std::vector<SignedText::File>& files) {
    SignedText text = ordinary();
    text.files = files;
    return SignedText::parse(text.string()) == text;
}

TEST(SignedTextTest, HasOneWayToBeWritten) {
    EXPECT_EQ(ordinary().string(),
              "orvu-update 1\nidentity app.orvu.Orvu\nversion 1.2\nbuild 12\n"
              "archive 5000 " +
                  digest + "\nfiles 3\n755 100 " + digest + " bin/orvu\n644 40 " + digest +
                  " release\n644 0 " + digest + " share/a\n");
    EXPECT_EQ(SignedText::parse(ordinary().string()), ordinary());
}

TEST(SignedTextTest, EachChangeOfAByteIsAnotherTextOrNone) {
    const std::string text = ordinary().string();
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string changed = text;
        changed[at] = static_cast<char>(changed[at] ^ 1);

        EXPECT_NE(SignedText::parse(changed), ordinary()) << changed;
    }
}

TEST(SignedTextTest, NothingMayBeMissingOrMore) {
    const std::string text = ordinary().string();
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_FALSE(SignedText::parse(text.substr(0, size))) << size;
    }
    EXPECT_FALSE(SignedText::parse(text + "\n"));
    EXPECT_FALSE(SignedText::parse(" " + text));
    EXPECT_FALSE(SignedText::parse(text + "644 1 " + digest + " tail\n"));
}

TEST(SignedTextTest, NumbersHaveOneWayToBeWritten) {
    const std::string text = ordinary().string();
    for (const char* const build :
         {"012", "+12", "-12", "0", "", " 12", "12 ", "0xc", "99999999999999999999"}) {
        std::string changed = text;
        changed.replace(changed.find("build 12") + 6, 2, build);

        EXPECT_FALSE(SignedText::parse(changed)) << build;
    }
}

TEST(SignedTextTest, SizesHaveLimits) {
    EXPECT_TRUE(canBeRead({{"a", false, SignedText::largestFile, digest}}));
    EXPECT_FALSE(canBeRead({{"a", false, SignedText::largestFile + 1, digest}}));
    std::vector<SignedText::File> many;
    for (const char* const name : {"a", "b", "c", "d"}) {
        many.push_back({name, false, SignedText::largestFile, digest});
    }
    EXPECT_TRUE(canBeRead(many));
    many.push_back({"e", false, 1, digest});
    EXPECT_FALSE(canBeRead(many));
    SignedText text = ordinary();
    text.archiveSize = SignedText::largestArchive + 1;
    EXPECT_FALSE(SignedText::parse(text.string()));
}

TEST(SignedTextTest, TheNumberOfFilesHasALimit) {
    std::vector<SignedText::File> files;
    for (std::size_t i = 0; i <= SignedText::mostFiles; ++i) {
        files.push_back({"f" + std::to_string(100'000 + i), false, 0, digest});
    }
    EXPECT_FALSE(canBeRead(files));
    files.pop_back();
    EXPECT_TRUE(canBeRead(files));
}

TEST(SignedTextTest, FilesAreSortedAndStandOnce) {
    EXPECT_FALSE(canBeRead({{"b", false, 0, digest}, {"a", false, 0, digest}}));
    EXPECT_FALSE(canBeRead({{"a", false, 0, digest}, {"a", false, 0, digest}}));
}

TEST(SignedTextTest, NamesAreApartAlsoWhereCaseDoesntCount) {
    EXPECT_FALSE(canBeRead({{"A", false, 0, digest}, {"a", false, 0, digest}}));
    EXPECT_FALSE(canBeRead({{"Bin/a", false, 0, digest}, {"bin/b", false, 0, digest}}));
    EXPECT_FALSE(canBeRead({{"a", false, 0, digest}, {"a/b", false, 0, digest}}));
    EXPECT_FALSE(canBeRead({{"A", false, 0, digest}, {"a/b", false, 0, digest}}));
}

TEST(SignedTextTest, HashesAreWholeAndInLowerCase) {
    for (const auto& bad : {std::string(63, 'a'), std::string(65, 'a'), std::string(64, 'A'),
                            std::string(64, 'g'), std::string{}}) {
        EXPECT_FALSE(canBeRead({{"a", false, 0, bad}})) << bad;
    }
}

TEST(SignedTextTest, FilesAndFoldersAreFound) {
    const auto text = ordinary();

    EXPECT_EQ(text.file("release")->size, 40U);
    EXPECT_EQ(text.file("bin"), nullptr);
    EXPECT_TRUE(text.hasFolder("bin"));
    EXPECT_FALSE(text.hasFolder("bi"));
    EXPECT_FALSE(text.hasFolder("release"));
    EXPECT_FALSE(text.hasFolder("share/a"));
}

TEST(SignedTextTest, AMessageIsATextWithOneLineMore) {
    const std::string signature(128, 'b');
    const SignedMessage message{"text\n", signature};

    const std::string written = message.string();
    const auto read = SignedMessage::split(written);

    EXPECT_EQ(read->text, "text\n");
    EXPECT_EQ(read->signature, signature);
    EXPECT_FALSE(SignedMessage::split(written + "\n"));
    EXPECT_FALSE(SignedMessage::split(written.substr(1, written.size() - 2)));
    EXPECT_FALSE(SignedMessage::split("signature " + signature + "\n"));
    EXPECT_FALSE(SignedMessage::split("text signature " + signature + "\n"));
    EXPECT_FALSE(SignedMessage::split(""));
}

TEST(PlainPathTest, NamesAreTheSameEverywhere) {
    for (const char* const path : {"a", "a/b", ".hidden", "a b", "a..b", "...", "~"}) {
        EXPECT_TRUE(isPlainPath(path)) << path;
    }
    for (const char* const path : {"", "/", "/a", "a/", "a//b", ".", "..", "a/..", "../a", "a/./b",
                                   "a\\b", "a\nb", "a\tb", "\x7f", "\xc3\xa9", "e\xcc\x81"}) {
        EXPECT_FALSE(isPlainPath(path)) << path;
    }
    EXPECT_FALSE(isPlainPath(std::string_view{"a\0b", 3}));
}

TEST(PlainPathTest, NamesHaveLimits) {
    const auto deep = [](int names) {
        std::string path = "a";
        for (int i = 1; i < names; ++i) path += "/a";
        return path;
    };
    EXPECT_TRUE(isPlainPath(std::string(255, 'a')));
    EXPECT_FALSE(isPlainPath(std::string(256, 'a')));
    EXPECT_TRUE(isPlainPath(deep(32)));
    EXPECT_FALSE(isPlainPath(deep(33)));
}

}  // namespace
}  // namespace orvu
