#include "site/icons/PageIcons.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Kind = ScriptResult::Kind;
using Strings = std::vector<std::string>;

Strings candidates(const ScriptResult& answer, std::string_view page = "https://a.example/x") {
    Strings result;
    for (const Url& each : PageIcons::candidates(answer, url(page))) {
        result.push_back(each.absoluteString());
    }
    return result;
}

TEST(PageIconsTest, DeclaredIconsComeInTheirOrderAndTheSitesOwnComesLast) {
    const ScriptResult answer{Kind::json, R"(["https://b.example/2.png","http://a.example/1"])"};

    EXPECT_EQ(candidates(answer), (Strings{"https://b.example/2.png", "http://a.example/1",
                                           "https://a.example/favicon.ico"}));
}

TEST(PageIconsTest, TheSitesOwnIconStandsBesideTheAuthorityWhateverFollowsIt) {
    for (const auto* page : {"http://a.example:81", "http://a.example:81?q=/",
                             "http://a.example:81#/", "http://a.example:81/deep/er?x"}) {
        EXPECT_EQ(candidates({}, page), Strings{"http://a.example:81/favicon.ico"}) << page;
    }
    EXPECT_EQ(candidates({}, "http://[::1]:8/x"), Strings{"http://[::1]:8/favicon.ico"});
}

TEST(PageIconsTest, EntriesThatAreNoAddressesAreLeftOut) {
    const ScriptResult answer{
        Kind::json,
        R"([1, null, "", "no address", {"href":"https://b.example/"}, [], "https://b.example/i"])"};

    EXPECT_EQ(candidates(answer),
              (Strings{"https://b.example/i", "https://a.example/favicon.ico"}));
}

TEST(PageIconsTest, AnswersOfOtherKindsDeclareNothing) {
    const Strings alone{"https://a.example/favicon.ico"};

    EXPECT_EQ(candidates({Kind::failed, ""}), alone);
    EXPECT_EQ(candidates({Kind::undefined, ""}), alone);
    EXPECT_EQ(candidates({Kind::text, R"(["https://b.example/i"])"}), alone);
    EXPECT_EQ(candidates({Kind::json, R"({"0":"https://b.example/i"})"}), alone);
    EXPECT_EQ(candidates({Kind::json, R"(["https://b.example/i")"}), alone);
    EXPECT_EQ(candidates({Kind::json, "7"}), alone);
}

TEST(PageIconsTest, NoMoreThanFourDeclaredIconsAreTakenOfTenThousand) {
    std::string json = "[\"https://b.example/0\"";
    for (int i = 1; i < 10'000; ++i) json += ",\"https://b.example/" + std::to_string(i) + '"';

    const auto found = candidates({Kind::json, json + "]"});

    EXPECT_EQ(found, (Strings{"https://b.example/0", "https://b.example/1", "https://b.example/2",
                              "https://b.example/3", "https://a.example/favicon.ico"}));
}

}  // namespace
}  // namespace orvu
