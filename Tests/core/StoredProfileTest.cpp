#include "core/BrowserStore.h"

#include "platform/DefaultsWorld.h"
#include "platform/StoredRecords.h"
#include "support/StoreWorld.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

/// One run of the program on a database, with pages that are fakes.
struct Program {
    SqliteUserDefaults defaults;
    FakeDesktop desktop;
    AppServices services{desktop.platform(defaults)};
    BrowserStore store{services, false, Profile::personal()};

    Program(const fs::path& file, const StorageOptions& options) : defaults(file, options) {}

    BrowserTab& open(const std::string& address) {
        return store.newTab(url(address), BrowserStore::Select::no);
    }
    static void visit(BrowserTab& tab, const std::string& address, const std::string& title) {
        page(tab).load(url(address));
        page(tab).finish(title);
    }
    [[nodiscard]] BookmarkStore& bookmarks() { return store.bookmarks(); }
};

/// What a person has, by its kinds.
struct Belongings {
    Strings tabs;
    Strings shelf;
    Strings groups;
    Strings bookmarks;
    Strings visits;

    explicit Belongings(Program& program)
        : tabs(addresses(program.store.tabs())),
          shelf(addresses(program.store.shelf())),
          bookmarks(addresses(program.bookmarks().items())),
          visits(addresses(program.store.visits())) {
        for (const auto& group : program.store.groups()) groups.push_back(group.name);
        std::erase(tabs, "");
    }
    [[nodiscard]] std::vector<const Strings*> kinds() const {
        return {&tabs, &shelf, &groups, &bookmarks, &visits};
    }
};

std::string numbered(std::string_view host, int number) {
    return "https://" + std::to_string(number) + "." + std::string{host} + ".example/" +
           std::string(300, 'p');
}

/// A profile in a real database, with an older copy.
class StoredProfileTest : public DefaultsTest {
protected:
    /// Does some of everything, and leaves the database closed.
    void use(std::string_view host, int count, bool isFirst) const {
        Program program{file, atOnce()};
        for (int number = 0; number < count; ++number) {
            BrowserTab& tab = program.open(numbered(host, number));
            Program::visit(tab, numbered(host, number), std::string{host} + std::string(100, 't'));
            program.bookmarks().toggle(url(numbered(host, number)), "bookmarked");
            if (number % 4 == 0) program.store.park(tab);
        }
        if (isFirst) program.store.newGroup(*program.store.tabs().back());
        program.store.rename(program.store.groups().front(), host);
    }
    /// The older copy has what was there before the last program.
    void makeBoth() {
        use("older", 60, true);
        backUp();
        backup = contents(beside(".backup"));
        older = std::make_unique<Belongings>(*reopened());
        use("latest", 60, false);
        latest = std::make_unique<Belongings>(*reopened());
        whole = contents(file);
    }
    [[nodiscard]] std::unique_ptr<Program> reopened() const {
        return std::make_unique<Program>(file, atOnce());
    }
    void restore(std::string_view database) const {
        fs::remove_all(folder);
        fs::create_directory(folder);
        overwrite(file, database);
        overwrite(beside(".backup"), backup);
    }
    /// How many kinds are as they were last. Each must be so, or as in the older copy.
    [[nodiscard]] int countLatest(const std::string& what) const {
        const auto program = reopened();
        const Belongings found{*program};
        int count = 0;
        for (std::size_t kind = 0; kind < found.kinds().size(); ++kind) {
            const bool isLatest = *found.kinds()[kind] == *latest->kinds()[kind];
            EXPECT_TRUE(isLatest || *found.kinds()[kind] == *older->kinds()[kind])
                << "kind " << kind << ", " << what;
            count += isLatest ? 1 : 0;
        }
        return count;
    }

    std::unique_ptr<Belongings> older;
    std::unique_ptr<Belongings> latest;
    std::string whole;
    std::string backup;
};

TEST_F(StoredProfileTest, OfADatabaseCutShortEachDocumentIsTheLatestOrThatOfTheOlderCopy) {
    makeBoth();
    constexpr std::size_t cuts = 20;
    int count = 0;
    for (std::size_t cut = 0; cut < cuts; ++cut) {
        restore(std::string_view{whole}.substr(0, whole.size() * cut / cuts));
        count += countLatest("cut " + std::to_string(cut));
    }
    EXPECT_GT(count, 20);
}

TEST_F(StoredProfileTest, AfterFlippedBitsEachDocumentIsTheLatestOrThatOfTheOlderCopy) {
    makeBoth();
    constexpr int rounds = 60;
    std::minstd_rand random{20260304};
    int count = 0;
    for (int round = 0; round < rounds; ++round) {
        std::string damaged = whole;
        for (int bit = round % 3; bit >= 0; --bit) {
            auto& byte = damaged[100 + random() % (damaged.size() - 100)];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
        }
        restore(damaged);
        count += countLatest("round " + std::to_string(round));
    }
    EXPECT_GT(count, rounds * 3);
}

TEST_F(StoredProfileTest, OfAHistoryWithOneFlippedBitTheOlderCopysIsTakenAndTheBytesArePutAside) {
    makeBoth();
    std::string damaged = whole;
    // The shelf has titles as well, but no dates behind them.
    const auto at = damaged.find("latest" + std::string(100, 't') + R"(","date")");
    ASSERT_NE(at, std::string::npos);
    damaged[at] = 'm';  // one bit beside the l
    restore(damaged);

    const auto program = reopened();

    const Belongings found{*program};
    EXPECT_EQ(found.visits, older->visits);
    EXPECT_EQ(found.tabs, latest->tabs);
    EXPECT_EQ(found.shelf, latest->shelf);
    EXPECT_EQ(found.groups, latest->groups);
    EXPECT_EQ(found.bookmarks, latest->bookmarks);
    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside WHERE key = 'browserVisits' "
                                      "AND instr(value, CAST('matest' AS BLOB)) > 0"),
              1);
}

TEST_F(StoredProfileTest, AHistoryThatDoesNotDecodeCountsAsNoneAndIsPutAsideByTheFirstVisit) {
    const std::string broken = R"([{"id":"0A1B2C3D-0000-4000-8000-000000000000","url":)";
    SqliteUserDefaults{file}.setData("browserVisits", broken);
    {
        Program program{file, atOnce()};
        EXPECT_TRUE(program.store.visits().empty());
        EXPECT_EQ(program.defaults.data("browserVisits"), broken);

        Program::visit(*program.store.active(), "https://first.example/", "first");
    }

    EXPECT_EQ(addresses(reopened()->store.visits()), (Strings{"https://first.example/"}));
    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT instr(value, CAST('0A1B2C3D' AS BLOB)) > 0 "
                                      "FROM setAside WHERE key = 'browserVisits'"),
              1);
}

/// What a person deletes by the store's own operations.
class StoredDeletionTest : public StoredProfileTest {
protected:
    static constexpr std::string_view canary = "canary-of-this-test";
    const std::string secret = "https://canary-of-this-test.example/";
    const std::string kept = "https://kept-page.example/";

    /// Visits and bookmarks both pages, makes an older copy, and damaged files with the canary.
    void spread() const {
        {
            Program program{file, atOnce()};
            for (const auto& address : {secret, kept}) {
                Program::visit(*program.store.active(), address, "title");
                program.bookmarks().toggle(url(address), "title");
            }
        }
        backUp();
        ASSERT_TRUE(folderHas(folder, canary, ".backup"));
        overwrite(beside(".damaged-1"), "damaged " + secret);
        SqliteConnection{file, Access::readWrite}.execute(
            "INSERT INTO setAside (key, value, date) VALUES "
            "('browserVisits', CAST('canary-of-this-test' AS BLOB), ''), "
            "('orvuBookmarks', CAST('canary-of-this-test' AS BLOB), '')");
    }
    [[nodiscard]] bool isGone() const {
        return waitUntil([&] { return !folderHas(folder, canary, ""); });
    }
};

TEST_F(StoredDeletionTest, AVisitAndABookmarkThatAreRemovedAreInNoFile) {
    spread();
    Program program{file, atOnce()};

    program.store.removeVisit(program.store.visits().front());
    program.bookmarks().remove(program.bookmarks().items().back());

    EXPECT_TRUE(isGone());
    EXPECT_EQ(addresses(program.store.visits()), (Strings{kept}));
    EXPECT_EQ(addresses(program.bookmarks().items()), (Strings{kept}));
    EXPECT_TRUE(folderHas(folder, kept, ".backup"));
}

TEST_F(StoredDeletionTest, AHistoryThatIsClearedIsInNoFile) {
    spread();
    Program program{file, atOnce()};
    program.bookmarks().remove(program.bookmarks().items().back());

    program.store.clearHistory(std::nullopt);

    EXPECT_TRUE(isGone());
}

TEST_F(StoredDeletionTest, AHistoryThatNobodyCouldReadIsNotPutAsideWhenItIsCleared) {
    SqliteUserDefaults{file}.setData("browserVisits", "[{" + secret);
    Program program{file, atOnce()};
    ASSERT_TRUE(program.store.visits().empty());

    program.store.clearHistory(std::nullopt);

    EXPECT_TRUE(isGone());
}

TEST_F(StoredDeletionTest, AProfileThatIsRemovedIsInNoFile) {
    const Profile work{Uuid::random(), "Work of canary-of-this-test", "briefcase.fill", 1};
    {
        SqliteUserDefaults defaults{file, atOnce()};
        writeRecords(defaults, ProfileStore::key, std::vector{Profile::personal(), work});
        FakeDesktop desktop;
        AppServices services{desktop.platform(defaults)};
        BrowserStore store{services, false, work};
        Program::visit(*store.active(), secret, "title");
        store.bookmarks().toggle(url(secret), "title");
        store.newGroup(*store.active());
        store.park(*store.active());
    }
    backUp();
    ASSERT_TRUE(folderHas(folder, canary, ".backup"));
    Program program{file, atOnce()};

    program.services.profiles().remove(work);

    EXPECT_TRUE(isGone());
}

TEST_F(StoredDeletionTest, AWindowOfARemovedProfileGoesOnInMemoryAlone) {
    const Profile work{Uuid::random(), "Work", "briefcase.fill", 1};
    {
        SqliteUserDefaults defaults{file, atOnce()};
        writeRecords(defaults, ProfileStore::key, std::vector{Profile::personal(), work});
    }
    {
        Program program{file, atOnce()};
        BrowserStore window{program.services, false, work};
        Program::visit(*window.active(), kept, "title");

        program.services.profiles().remove(work);
        Program::visit(*window.active(), secret, "title");
        window.bookmarks().toggle(url(secret), "title");
        window.newGroup(*window.active());
        window.togglePin(window.newTab(url(secret), BrowserStore::Select::yes));
        window.park(*window.active());
        EXPECT_EQ(addresses(window.shelf()), (Strings{secret}));
        window.park(window.newTab(url(kept), BrowserStore::Select::yes));
        EXPECT_EQ(window.shelf().size(), 2U);
        window.unpark(window.shelf().front());
        EXPECT_EQ(window.visits().size(), 2U);
        EXPECT_TRUE(window.bookmarks().contains(url(secret)));
        window.clearHistory(std::nullopt);
    }

    EXPECT_FALSE(folderHas(folder, canary, ""));
    EXPECT_FALSE(folderHas(folder, work.id.string(), ""));
}

TEST_F(StoredDeletionTest, OlderCopiesHaveNothingOfPrivateWindows) {
    Program program{file, backingUp()};
    BrowserStore window{program.services, true, Profile::personal()};
    Program::visit(*program.store.active(), kept, "title");
    Program::visit(*window.active(), secret, "title");
    window.newGroup(*window.active());
    window.park(*window.active());
    ASSERT_EQ(addresses(window.shelf()), (Strings{secret}));

    EXPECT_TRUE(waitUntil([&] { return folderHas(folder, kept, ".backup"); }));
    EXPECT_FALSE(folderHas(folder, canary, ""));
}

/// A history with as many visits as it can have.
class FullHistoryTest : public StoredProfileTest {
protected:
    static std::string site(std::size_t number) {
        return "https://site-" + std::to_string(number) + ".example/";
    }
    void fill() const {
        SqliteUserDefaults defaults{file};
        const FakeDesktop desktop;
        std::vector<Visit> visits;
        for (std::size_t number = 0; number < VisitHistory::limit; ++number) {
            visits.push_back({Uuid::random(), url(site(number)), "title", desktop.loop.now()});
        }
        writeRecords(defaults, "browserVisits", visits);
    }
    void visitSome(Program& program, std::size_t count) const {
        for (std::size_t number = 0; number < count; ++number) {
            Program::visit(*program.store.active(), site(VisitHistory::limit + number), "title");
        }
    }
    [[nodiscard]] std::optional<std::int64_t> query(const fs::path& database,
                                                    const std::string& sql) const {
        return SqliteConnection{database, Access::readOnly}.queryInteger(sql);
    }
};

TEST_F(FullHistoryTest, TheOldestVisitsMakeRoomWithoutAPassOverTheOlderCopy) {
    fill();
    backUp();
    auto options = atOnce();
    options.pace.afterStart = options.pace.afterChange = options.pace.afterDeletion =
        std::chrono::hours{1};
    Program program{file, options};

    visitSome(program, 50);

    ASSERT_EQ(program.store.visits().size(), VisitHistory::limit);
    EXPECT_EQ(query(file, "SELECT count(*) FROM erasures WHERE isDeletion"), 0);
    EXPECT_EQ(query(file, "SELECT count(*) FROM erasures WHERE key = 'browserVisits'"), 0);
}

TEST_F(FullHistoryTest, TheOldestVisitsLeaveTheOlderCopyWhenItIsMadeAnew) {
    fill();
    backUp();
    Program program{file, backingUp()};

    visitSome(program, 50);

    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, site(49), ".backup"); }));
    EXPECT_TRUE(waitUntil([&] { return folderHas(folder, site(VisitHistory::limit), ".backup"); }));
}

TEST_F(FullHistoryTest, AVisitThatIsRemovedIsGoneFromTheOlderCopyAtOnceWithThoseDroppedBefore) {
    fill();
    backUp();
    Program program{file, atOnce()};
    visitSome(program, 3);

    program.store.removeVisit(program.store.visits().front());

    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, site(3), ""); }));
    EXPECT_FALSE(folderHas(folder, site(2), ".backup"));
    EXPECT_TRUE(folderHas(folder, site(4), ".backup"));
}

}  // namespace
}  // namespace orvu
