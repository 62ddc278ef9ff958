#include "site/Favicons.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

class FaviconStoreTest : public testing::Test {
protected:
    [[nodiscard]] std::string shown(std::string_view site,
                                    Persistence persistence = Persistence::persistent) {
        return FakeImageCodec::name(store.icon(site, persistence));
    }
    void failChain(const std::string& site) {
        EXPECT_TRUE(http.answer("https://" + site + "/apple-touch-icon.png", 404));
        EXPECT_TRUE(http.answer("https://" + site + "/favicon.ico", 404));
    }
    [[nodiscard]] std::string fetched(const HttpResponse& response) {
        auto task = store.fetch(url("https://x.example/i"));
        task.start();
        EXPECT_TRUE(http.answer("https://x.example/i", response));
        EXPECT_TRUE(task.isDone());
        return FakeImageCodec::name(task.result());
    }

    VirtualMainLoop loop;
    FakeHttpSession http;
    FakeImageCodec codec;
    FakeFileIO files;
    FaviconStore store{http, codec, files, "icons"};

    static constexpr auto host = "a.example";
    static constexpr auto touch = "https://a.example/apple-touch-icon.png";
    static constexpr auto root = "https://a.example/favicon.ico";
};

TEST_F(FaviconStoreTest, FiftyAskersOfANewHostStartOneLoad) {
    for (int i = 0; i < 50; ++i) EXPECT_EQ(shown(host), "");

    EXPECT_EQ(files.folders, Strings{"icons"});
    EXPECT_EQ(files.reads, Strings{"icons/a.example.png"});
    EXPECT_EQ(http.asked, Strings{touch});
    EXPECT_TRUE(store.isLoading(host));
}

TEST_F(FaviconStoreTest, AnEmptyHostStartsNoLoad) {
    EXPECT_EQ(shown(""), "");
    EXPECT_EQ(shown("WWW."), "");
    store.set(FakeImageCodec::image("x"), "www.", Persistence::persistent);

    EXPECT_EQ(files.reads, Strings{});
    EXPECT_EQ(files.writes, Strings{});
}

TEST_F(FaviconStoreTest, TheFirstAddressOfTheChainWinsAndIsWritten) {
    static_cast<void>(shown(host));

    http.answer(touch, 200, "img touch");

    EXPECT_EQ(shown(host), "touch");
    EXPECT_EQ(http.asked, Strings{touch});
    EXPECT_EQ(files.contents["icons/a.example.png"], "img touch");
    EXPECT_FALSE(store.isLoading(host));
}

TEST_F(FaviconStoreTest, TheSecondAddressIsTriedAfterTheFirst) {
    static_cast<void>(shown(host));

    http.fail(touch);
    http.answer(root, 200, "img root");

    EXPECT_EQ(http.asked, (Strings{touch, root}));
    EXPECT_EQ(shown(host), "root");
}

TEST_F(FaviconStoreTest, AHostWithoutIconsIsMissingAndNotAskedAgain) {
    static_cast<void>(shown(host));
    failChain(host);

    EXPECT_EQ(shown(host), "");

    EXPECT_TRUE(store.isMissing(host));
    EXPECT_FALSE(store.isLoading(host));
    EXPECT_EQ(http.asked.size(), 2U);
    EXPECT_EQ(files.reads.size(), 1U);
}

TEST_F(FaviconStoreTest, AnIconFromAPageClearsMissing) {
    static_cast<void>(shown(host));
    failChain(host);

    store.set(FakeImageCodec::image("page"), "WWW.a.Example", Persistence::persistent);

    EXPECT_FALSE(store.isMissing(host));
    EXPECT_EQ(shown(host), "page");
    EXPECT_EQ(files.contents["icons/a.example.png"], "img page");
}

TEST_F(FaviconStoreTest, AFileWinsOverTheNetworkAndIsNotTouched) {
    files.contents["icons/a.example.png"] = "img disk";

    EXPECT_EQ(shown(host), "");

    EXPECT_EQ(shown(host), "disk");
    EXPECT_EQ(http.asked, Strings{});
    EXPECT_EQ(files.writes, Strings{});
}

TEST_F(FaviconStoreTest, ADamagedFileCountsAsNone) {
    files.contents["icons/a.example.png"] = "damaged";
    static_cast<void>(shown(host));

    http.answer(touch, 200, "img new");

    EXPECT_EQ(files.contents["icons/a.example.png"], "img new");
}

TEST_F(FaviconStoreTest, TheFormsOfAHostAreOneIconAndOneFile) {
    static_cast<void>(shown("www.a.example"));
    static_cast<void>(shown("A.EXAMPLE"));
    http.answer(touch, 200, "img one");

    EXPECT_EQ(shown("Www.A.example"), "one");
    EXPECT_EQ(files.reads, Strings{"icons/a.example.png"});
    EXPECT_EQ(http.asked, Strings{touch});
}

TEST_F(FaviconStoreTest, OnlyOneLeadingWwwIsTakenOff) {
    static_cast<void>(shown("www.www.a.example"));
    http.answer("https://www.a.example/apple-touch-icon.png", 200, "img w");

    EXPECT_EQ(shown("www.www.a.example"), "w");
    EXPECT_FALSE(store.isLoading("www.www.a.example"));
    EXPECT_FALSE(store.isLoading(host));
}

TEST_F(FaviconStoreTest, FileNamesKeepLettersNumbersDotsAndHyphens) {
    EXPECT_EQ(FaviconStore::fileName("a-b.example"), "a-b.example.png");
    EXPECT_EQ(FaviconStore::fileName("a_b/../c\\ d:8"), "ab..cd8.png");
    EXPECT_EQ(FaviconStore::fileName("mün\u0308chen.日本.٣½"), "mün\u0308chen.日本.٣½.png");
    EXPECT_EQ(FaviconStore::fileName(std::string_view{"a\0b\xff", 4}), "ab.png");
    EXPECT_EQ(FaviconStore::fileName("::1"), "1.png");
}

TEST_F(FaviconStoreTest, FileNamesOfRandomHostsNeverLeaveTheFolder) {
    RandomText random{20261121};
    for (int i = 0; i < 3000; ++i) {
        const std::string key = FaviconStore::key(random.text(24));
        const std::string name = FaviconStore::fileName(key);

        EXPECT_EQ(FaviconStore::fileName(name), name + ".png");
        EXPECT_TRUE(isWellFormed(name));
        EXPECT_FALSE(name.contains('/') || name.contains('\0'));
        EXPECT_EQ(FaviconStore::key("WWW." + key), key);
    }
}

TEST_F(FaviconStoreTest, ABodyOfAMillionBytesIsRefusedAndOneOfAByteLessIsNot) {
    std::string body = "img ";
    body.resize(999'999, 'x');

    EXPECT_NE(fetched({200, body, ""}), "");
    EXPECT_EQ(fetched({200, body + "x", ""}), "");
}

TEST_F(FaviconStoreTest, OnlyAnImageWithStatus200IsFetched) {
    EXPECT_EQ(fetched({200, "img ok", ""}), "ok");
    EXPECT_EQ(fetched({200, "", ""}), "");
    EXPECT_EQ(fetched({200, "text", ""}), "");
    EXPECT_EQ(fetched({203, "img no", ""}), "");
    EXPECT_EQ(fetched({404, "img no", ""}), "");
}

TEST_F(FaviconStoreTest, AddressesThatAreNotOfTheWebAreNotAskedFor) {
    for (const auto* each : {"file:///etc/passwd", "data:image/png;base64,aaaa", "javascript:1",
                             "ftp://a.example/", "/favicon.ico", "https:///x"}) {
        auto task = store.fetch(url(each));
        task.start();
        EXPECT_TRUE(task.isDone() && !task.result()) << each;
    }
    EXPECT_EQ(http.asked, Strings{});
}

TEST_F(FaviconStoreTest, AHostThatWouldLeadToAnotherSiteIsPassedOver) {
    static_cast<void>(shown("b.example/a"));
    static_cast<void>(shown("x@b.example"));
    static_cast<void>(shown("::1"));

    EXPECT_EQ(http.asked, Strings{});
    EXPECT_TRUE(store.isMissing("b.example/a") && store.isMissing("::1"));
}

TEST_F(FaviconStoreTest, AnIconOfThePageStaysWhateverTheChainFindsLater) {
    files.held = true;
    files.contents["icons/a.example.png"] = "img disk";
    static_cast<void>(shown(host));
    store.set(FakeImageCodec::image("page"), host, Persistence::persistent);
    files.release();
    EXPECT_EQ(shown(host), "page");

    static_cast<void>(shown("b.example"));
    store.set(FakeImageCodec::image("page"), "b.example", Persistence::persistent);
    http.answer("https://b.example/apple-touch-icon.png", 404);

    EXPECT_EQ(shown("b.example"), "page");
    EXPECT_FALSE(store.isMissing("b.example") || store.isLoading("b.example"));
    EXPECT_EQ(http.open(), Strings{});
}

TEST_F(FaviconStoreTest, FailuresToWriteAreSilentAndTheIconStaysInMemory) {
    files.full = true;
    store.set(FakeImageCodec::image("x"), host, Persistence::persistent);
    codec.refusesToEncode = true;
    store.set(FakeImageCodec::image("y"), "b.example", Persistence::persistent);

    EXPECT_EQ(shown(host), "x");
    EXPECT_EQ(shown("b.example"), "y");
    EXPECT_EQ(files.writes, Strings{"icons/a.example.png"});
}

TEST_F(FaviconStoreTest, AnArrivalWakesOnlyThoseWhoShowTheHost) {
    int any = 0;
    int mine = 0;
    int others = 0;
    store.connectChanged([&] { ++any; });
    store.connectIcon("www.a.example", [&] { ++mine; });
    for (int i = 0; i < 500; ++i) {
        store.connectIcon(std::to_string(i) + ".example", [&] { ++others; });
    }

    static_cast<void>(shown(host));
    http.answer(touch, 200, "img x");

    EXPECT_EQ(any, 1);
    EXPECT_EQ(mine, 1);
    EXPECT_EQ(others, 0);
}

TEST_F(FaviconStoreTest, AnObserverMayAskAndSetFromWithinTheSignal) {
    store.connectIcon(host, [this] {
        if (shown(host) == "one")
            store.set(FakeImageCodec::image("two"), host, Persistence::persistent);
        for (int i = 0; i < 100; ++i) static_cast<void>(shown(std::to_string(i) + ".example"));
    });

    store.set(FakeImageCodec::image("one"), host, Persistence::persistent);

    EXPECT_EQ(shown(host), "two");
}

TEST_F(FaviconStoreTest, APrivateWindowReadsTheFileAndWritesNothing) {
    files.contents["icons/a.example.png"] = "img disk";

    static_cast<void>(shown(host, Persistence::ephemeral));
    static_cast<void>(shown("b.example", Persistence::ephemeral));
    http.answer("https://b.example/apple-touch-icon.png", 200, "img b");
    store.set(FakeImageCodec::image("page"), "c.example", Persistence::ephemeral);

    EXPECT_EQ(shown(host, Persistence::ephemeral), "disk");
    EXPECT_EQ(shown("b.example", Persistence::ephemeral), "b");
    EXPECT_EQ(shown("c.example", Persistence::ephemeral), "page");
    EXPECT_EQ(files.writes, Strings{});
}

TEST_F(FaviconStoreTest, AnIconOfAPrivateWindowIsWrittenOnceWhenAnotherFirstAsks) {
    store.set(FakeImageCodec::image("page"), host, Persistence::ephemeral);

    EXPECT_EQ(shown(host), "page");
    EXPECT_EQ(shown(host), "page");

    EXPECT_EQ(files.writes, Strings{"icons/a.example.png"});
}

TEST_F(FaviconStoreTest, AnIconOfAPrivateWindowIsWrittenWhenAnotherSetsOne) {
    store.set(FakeImageCodec::image("private"), host, Persistence::ephemeral);

    store.set(FakeImageCodec::image("ordinary"), host, Persistence::persistent);

    EXPECT_EQ(files.contents["icons/a.example.png"], "img ordinary");
}

TEST_F(FaviconStoreTest, APrivateVisitWritesNothingWhereOthersShowTheSiteAlready) {
    static_cast<void>(shown(host));
    failChain(host);
    store.set(FakeImageCodec::image("old"), "b.example", Persistence::persistent);
    files.writes.clear();
    // An ordinary window's views ask again as soon as they are told.
    store.connectIcon(host, [this] { static_cast<void>(shown(host)); });
    store.connectIcon("b.example", [this] { static_cast<void>(shown("b.example")); });

    store.set(FakeImageCodec::image("private"), host, Persistence::ephemeral);
    store.set(FakeImageCodec::image("private"), "b.example", Persistence::ephemeral);

    EXPECT_EQ(shown(host), "private");
    EXPECT_EQ(files.writes, Strings{});
}

TEST_F(FaviconStoreTest, ALoadThatAnOrdinaryWindowAlsoWaitsForIsWritten) {
    static_cast<void>(shown(host, Persistence::ephemeral));
    static_cast<void>(shown(host, Persistence::persistent));
    static_cast<void>(shown(host, Persistence::ephemeral));

    http.answer(touch, 200, "img x");

    EXPECT_EQ(files.writes, Strings{"icons/a.example.png"});
}

TEST_F(FaviconStoreTest, PagesWithoutNumberWhoseFourHostsNeverAnswerLeaveRoomForOthers) {
    std::vector<Task<ImagePointer>> slow;
    for (int page = 0; page < 200; ++page) {
        for (int each = 0; each < 4; ++each) {
            const auto name = "slow" + std::to_string(each) + ".example";
            slow.push_back(store.fetch(url("https://" + name + "/" + std::to_string(page))));
            slow.back().start();
        }
    }
    EXPECT_EQ(http.open().size(), 16U);

    static_cast<void>(shown(host));
    http.answer(touch, 200, "img x");

    EXPECT_EQ(shown(host), "x");
    for (const auto& each : slow) EXPECT_FALSE(each.isDone());
}

TEST_F(FaviconStoreTest, AFetchThatEndsIsFollowedByOneOfItsHostUntilAllAreDone) {
    std::vector<Task<ImagePointer>> fetches;
    for (int i = 0; i < 10; ++i) {
        fetches.push_back(store.fetch(url("https://a.example/" + std::to_string(i))));
        fetches.back().start();
    }
    EXPECT_EQ(http.asked.size(), 4U);

    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(http.answer("https://a.example/" + std::to_string(i), 200, "img x"));
    }

    for (const auto& each : fetches) EXPECT_EQ(FakeImageCodec::name(each.result()), "x");
}

TEST_F(FaviconStoreTest, NoMoreThanTwentyFourAreFetchedAtATimeAndAllAreTried) {
    for (int i = 0; i < 300; ++i) static_cast<void>(shown(std::to_string(i) + ".example"));
    EXPECT_EQ(http.open().size(), 24U);

    while (!http.open().empty()) {
        EXPECT_LE(http.open().size(), 24U);
        http.fail(http.open().front());
    }

    EXPECT_EQ(http.asked.size(), 600U);
    EXPECT_TRUE(store.isMissing("299.example"));
}

TEST_F(FaviconStoreTest, AFetchThatIsDroppedMakesRoomAndOneThatWaitsIsForgotten) {
    std::vector<Task<ImagePointer>> fetches;
    for (int i = 0; i < 6; ++i) {
        fetches.push_back(store.fetch(url("https://a.example/" + std::to_string(i))));
        fetches.back().start();
    }

    fetches[4].cancel();
    fetches[0].cancel();

    EXPECT_EQ(http.open(), (Strings{"https://a.example/1", "https://a.example/2",
                                    "https://a.example/3", "https://a.example/5"}));
}

TEST_F(FaviconStoreTest, TheEndOfTheStoreBeginsNoFetchThatWaited) {
    {
        FaviconStore leaving{http, codec, files, "other"};
        for (int i = 0; i < 50; ++i) {
            static_cast<void>(
                leaving.icon(std::to_string(i) + ".example", Persistence::persistent));
        }
    }

    EXPECT_EQ(http.asked.size(), 24U);
    EXPECT_TRUE(http.open().empty());
}

TEST_F(FaviconStoreTest, HostsThatNobodyWatchesAnyMoreAreForgotten) {
    int told = 0;
    const ScopedConnection kept = store.connectIcon(host, [&] { ++told; });
    for (int i = 0; i < 5000; ++i) {
        const ScopedConnection passing =
            store.connectIcon(std::to_string(i) + ".example", [&] { ADD_FAILURE(); });
        EXPECT_LE(store.watchedHosts(), 100U);
    }

    store.set(FakeImageCodec::image("x"), host, Persistence::persistent);
    store.set(FakeImageCodec::image("x"), "7.example", Persistence::persistent);

    EXPECT_EQ(told, 1);
}

TEST_F(FaviconStoreTest, AllHostsThatAreWatchedAreKept) {
    int told = 0;
    std::vector<ScopedConnection> connections;
    for (int i = 0; i < 1000; ++i) {
        connections.emplace_back(
            store.connectIcon(std::to_string(i) + ".example", [&] { ++told; }));
    }
    for (int i = 0; i < 1000; ++i) {
        store.set(FakeImageCodec::image("x"), std::to_string(i) + ".example",
                  Persistence::persistent);
    }
    EXPECT_EQ(told, 1000);

    connections.clear();
    for (int i = 0; i < 2000; ++i) store.connectIcon("b.example", [] {}).disconnect();
    for (int i = 0; i < 2000; ++i) {
        store.connectIcon(std::to_string(i) + ".other", [] {}).disconnect();
    }

    EXPECT_LE(store.watchedHosts(), 100U);
}

TEST_F(FaviconStoreTest, AnObserverMayMakeTheStoreForgetItsOwnHost) {
    int told = 0;
    ScopedConnection own;
    own = store.connectIcon(host, [&] {
        ++told;
        own = {};
        for (int i = 0; i < 500; ++i) {
            store.connectIcon(std::to_string(i) + ".example", [] {}).disconnect();
        }
    });

    store.set(FakeImageCodec::image("x"), host, Persistence::persistent);
    store.set(FakeImageCodec::image("y"), host, Persistence::persistent);

    EXPECT_EQ(told, 1);
}

TEST_F(FaviconStoreTest, TheEndOfTheStoreEndsItsRequests) {
    {
        FaviconStore leaving{http, codec, files, "other"};
        static_cast<void>(leaving.icon(host, Persistence::persistent));
    }

    EXPECT_EQ(http.abandoned, Strings{touch});
    EXPECT_FALSE(http.answer(touch, 200, "img x"));
}

}  // namespace
}  // namespace orvu
