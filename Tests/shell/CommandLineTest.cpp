#include "shell/CommandLine.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/Uuid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace orvu {
namespace {

class UrlFromArgumentTest : public testing::Test {
protected:
    UrlFromArgumentTest() {
        std::filesystem::create_directories(folder_ / "sub");
        std::ofstream{folder_ / "a page#1?.html"} << "x";
    }
    ~UrlFromArgumentTest() override { std::filesystem::remove_all(folder_); }

    [[nodiscard]] std::string read(std::string_view argument, Start start = Start::first) const {
        const auto result = urlFromArgument(argument, folder_, settings_, start);
        return result ? result->absoluteString() : "nothing";
    }
    [[nodiscard]] std::string inFolder(std::string_view rest) const {
        return std::string{"file://"}.append(folder_.string()).append(rest);
    }

private:
    FakeUserDefaults defaults_;
    Settings settings_{defaults_};
    const std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("orvu" + Uuid::random().string());
};

TEST_F(UrlFromArgumentTest, AnAddressWithASchemeStaysAsItIs) {
    for (const auto text : {"https://a.example/x?y#z", "HTTP://A.example", "file:///x/y.html"}) {
        EXPECT_EQ(read(text), text);
    }
    EXPECT_EQ(read(" https://a.example/\n"), "https://a.example/");
}

TEST_F(UrlFromArgumentTest, AnAddressWithinAnAddressDoesNotMakeASchemeOfTheOuterOne) {
    EXPECT_EQ(read("a.example/?next=https://b.example/"),
              "https://a.example/?next=https://b.example/");
    EXPECT_EQ(read("://a.example"), "https://www.google.com/search?q=://a.example");
}

TEST_F(UrlFromArgumentTest, AFileThatExistsBecomesItsAddress) {
    EXPECT_EQ(read("a page#1?.html"), inFolder("/a%20page%231%3F.html"));
    EXPECT_EQ(read("./sub/../a page#1?.html"), inFolder("/a%20page%231%3F.html"));
    EXPECT_EQ(read("sub"), inFolder("/sub"));
}

TEST_F(UrlFromArgumentTest, OtherTextLeadsWhereItLeadsWhenItIsTyped) {
    EXPECT_EQ(read("gnu.org"), "https://gnu.org");
    EXPECT_EQ(read("about:blank"), "about:blank");
    EXPECT_EQ(read("two words"), "https://www.google.com/search?q=two%20words");
    EXPECT_EQ(read("missing"), "https://www.google.com/search?q=missing");
}

TEST_F(UrlFromArgumentTest, BlankTextLeadsNowhere) {
    for (const auto text : {"", " ", "\t\n"}) EXPECT_EQ(read(text), "nothing");
}

TEST_F(UrlFromArgumentTest, AVeryLongArgumentIsTyped) {
    const std::string text(100'000, 'x');

    EXPECT_EQ(read(text), std::string{"https://www.google.com/search?q="}.append(text));
}

TEST_F(UrlFromArgumentTest, OtherSchemesAreNotOpened) {
    for (const auto text : {"what://", "ftp://a.example/x", "javascript://x", "webkit://gpu"}) {
        EXPECT_EQ(read(text), "nothing") << text;
    }
    EXPECT_EQ(read("mailto:x@a.example"), "https://mailto:x@a.example");  // as when it is typed
}

TEST_F(UrlFromArgumentTest, AProgramThatRunsIsHandedAddressesOfTheWebAlone) {
    EXPECT_EQ(read("https://a.example/", Start::again), "https://a.example/");
    EXPECT_EQ(read("two words", Start::again), "https://www.google.com/search?q=two%20words");
    for (const auto text : {"sub", "file:///x/y.html", "about:blank"}) {
        EXPECT_EQ(read(text, Start::again), "nothing") << text;
    }
}

CommandLine parse(const std::vector<std::string>& arguments) {
    return CommandLine::parse(arguments);
}

TEST(CommandLineTest, TellsOptionsFromAddresses) {
    EXPECT_EQ(parse({"a.example", "two words"}).addresses,
              (std::vector<std::string>{"a.example", "two words"}));
    EXPECT_TRUE(parse({"", " ", "\n"}).addresses.empty());
    EXPECT_TRUE(parse({"--version"}).wantsVersion);
    EXPECT_TRUE(parse({"a.example", "--help"}).wantsHelp);
    EXPECT_TRUE(parse({"-h"}).wantsHelp);
    EXPECT_FALSE(parse({}).wantsHelp);
    EXPECT_FALSE(parse({}).wantsVersion);
}

TEST(CommandLineTest, AnUnknownOptionIsNoAddress) {
    const CommandLine commandLine = parse({"--verison", "-x", "-"});

    EXPECT_EQ(commandLine.unknownOptions, (std::vector<std::string>{"--verison", "-x", "-"}));
    EXPECT_TRUE(commandLine.addresses.empty());
}

TEST(CommandLineTest, BehindTwoDashesEverythingIsAnAddress) {
    const CommandLine commandLine = parse({"--", "--version", "--", "-x"});

    EXPECT_EQ(commandLine.addresses, (std::vector<std::string>{"--version", "--", "-x"}));
    EXPECT_FALSE(commandLine.wantsVersion);
    EXPECT_TRUE(commandLine.unknownOptions.empty());
}

TEST(CommandLineTest, OptionsOfTheDesktopPass) {
    const CommandLine commandLine = parse({"--gapplication-service"});

    EXPECT_TRUE(commandLine.unknownOptions.empty());
    EXPECT_TRUE(commandLine.addresses.empty());
}

TEST(CommandLineTest, ARefusalIsOneShortLineWithoutControlCharacters) {
    EXPECT_EQ(CommandLine::refusal("ftp://a.example"), "Orvu can't open “ftp://a.example”.\n");

    const std::string odd = CommandLine::refusal("a\x1b[2J\nb" + std::string(5000, 'x'));
    EXPECT_EQ(std::ranges::count(odd, '\n'), 1);
    EXPECT_FALSE(odd.contains('\x1b'));
    EXPECT_LT(odd.size(), 300U);
}

}  // namespace
}  // namespace orvu
