#include "ProjectPaths.h"
#include "foundation/text/Text.h"
#include "support/PlainSuggestionGate.h"
#include "support/PrivateTexts.h"
#include "support/SuggesterWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

namespace orvu {
namespace {

using namespace std::chrono_literals;

enum class Pace {
    pausing,  ///< each letter stands until it is sent, the worst case
    typing,   ///< 60 to 120 ms between two letters
};

/// The different texts that are sent while `text` is typed.
std::set<std::string> sentOf(std::string_view text, Pace pace, RandomText& random) {
    SuggesterWorld world;
    std::string typed;
    for (const auto character : characters(text)) {
        typed += character;
        world.type(typed);
        const auto gap = std::chrono::milliseconds{60 + random.below(61)};
        world.loop.advance(pace == Pace::typing ? gap : SearchSuggester::debounce + 1ms);
    }
    world.pause();

    std::set<std::string> sent;
    for (const auto& address : world.http.asked) {
        sent.insert(Url::parse(address)->queryItem("q").value());
    }
    return sent;
}

/// What became known of the texts of one kind.
struct Leak {
    std::size_t begun = 0;       ///< texts of which something was sent
    std::size_t whole = 0;       ///< texts that were sent as a whole
    std::size_t beginnings = 0;  ///< different texts that were sent
    std::size_t longest = 0;     ///< characters of the longest one
};

Leak leakOf(const PrivateTexts& kind, Pace pace) {
    RandomText random{53};
    Leak leak;
    for (const auto& text : kind.texts) {
        const auto sent = sentOf(text, pace, random);
        leak.begun += sent.empty() ? 0 : 1;
        leak.whole += sent.contains(text) ? 1 : 0;
        leak.beginnings += sent.size();
        for (const auto& each : sent) leak.longest = std::max(leak.longest, characterCount(each));
    }
    return leak;
}

/// The row of a kind in the table of what leaks, as the documentation has it.
std::string row(const PrivateTexts& kind) {
    const Leak worst = leakOf(kind, Pace::pausing);
    const Leak usual = leakOf(kind, Pace::typing);
    std::string result = "| " + kind.kind;
    for (const std::size_t number :
         {kind.texts.size(), worst.begun, worst.beginnings, worst.longest, worst.whole, usual.begun,
          usual.beginnings, usual.longest, usual.whole}) {
        result += " | " + std::to_string(number);
    }
    return result + " |";
}

class SuggestionLeakTest : public testing::Test {
protected:
    const std::vector<PrivateTexts> kinds = PrivateTextMaker{52}.all();
};

TEST_F(SuggestionLeakTest, ThereAreManyPrivateTexts) {
    std::set<std::string> different;
    for (const auto& kind : kinds) different.insert(kind.texts.begin(), kind.texts.end());

    EXPECT_GE(different.size(), 500U);
}

TEST_F(SuggestionLeakTest, WhateverTheGateHoldsBackIsNeverSentAtAnyPace) {
    RandomText random{54};
    std::size_t sent = 0;
    for (const auto& kind : kinds) {
        for (const auto& text : kind.texts) {
            for (const Pace pace : {Pace::pausing, Pace::typing}) {
                for (const auto& each : sentOf(text, pace, random)) {
                    ++sent;
                    EXPECT_TRUE(plainGateLets(each)) << each;
                    EXPECT_TRUE(text.starts_with(each)) << each << " is no beginning of " << text;
                }
            }
        }
    }
    EXPECT_GT(sent, 1000U) << "a test of what is not sent needs something that is";
}

TEST_F(SuggestionLeakTest, NothingIsSentInPrivateWindowsOrWithTheSettingOff) {
    SuggesterWorld privately;
    SuggesterWorld off;
    off.defaults.setBoolean("searchSuggestions", false);
    for (const auto& kind : kinds) {
        for (const auto& text : kind.texts) {
            std::string typed;
            for (const auto character : characters(text)) {
                typed += character;
                privately.typePrivately(typed);
                privately.pause();
                off.ask(typed);
            }
        }
    }

    EXPECT_EQ(privately.http.asked, std::vector<std::string>{});
    EXPECT_EQ(off.http.asked, std::vector<std::string>{});
}

TEST_F(SuggestionLeakTest, WhatSlipsThroughBeforeTheGateClosesIsWhatTheDocumentationSays) {
    std::ifstream file{ProjectPaths::suggestionDocs};
    const std::string page{std::istreambuf_iterator<char>{file}, {}};

    for (const auto& kind : kinds) {
        const auto line = row(kind);
        EXPECT_TRUE(page.contains(line + "\n")) << "The line should read:\n" << line;
    }
}

}  // namespace
}  // namespace orvu
