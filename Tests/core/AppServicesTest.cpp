#include "core/AppServices.h"

#include "fakes/FakeDownload.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace orvu {
namespace {

class AppServicesTest : public testing::Test {
protected:
    AppServices& start() { return services.emplace(desktop.platform()); }

    FakeDownload::Facts facts;
    FakeDesktop desktop;
    std::optional<AppServices> services;
};

TEST_F(AppServicesTest, DownloadsOfTheEngineComeIntoTheList) {
    start();

    desktop.engine.onDownload(std::make_unique<FakeDownload>(facts));

    EXPECT_EQ(services->downloads().items().size(), 1U);
}

TEST_F(AppServicesTest, AfterTheirEndNobodyTakesDownloads) {
    start();

    services.reset();

    EXPECT_FALSE(desktop.engine.onDownload);
}

TEST_F(AppServicesTest, RulesAgainstTrackersAreCompiledFromTheStart) {
    start();

    ASSERT_EQ(desktop.ruleLists.sources.size(), 1U);
    EXPECT_EQ(desktop.ruleLists.sources[0].identifier, TrackerBlocker::identifier);
}

TEST_F(AppServicesTest, RulesThatAreNotWantedAreNotCompiled) {
    desktop.defaults.setBoolean("blockTrackers", false);

    start();

    EXPECT_TRUE(desktop.ruleLists.sources.empty());
}

TEST_F(AppServicesTest, AProfileGoesWithItsWebsiteData) {
    const Profile work{Uuid::random(), "Work", "bag", 1};
    desktop.defaults.setData(ProfileStore::key,
                             encodeRecords(std::vector{Profile::personal(), work}).value());
    start();

    services->profiles().remove(work);

    EXPECT_EQ(services->profiles().profiles(), std::vector{Profile::personal()});
    EXPECT_EQ(desktop.engine.removedStores, std::vector{work.id});
}

TEST_F(AppServicesTest, IconsLieInTheProgramsOwnFolder) {
    desktop.paths.data = "/data";

    start();

    EXPECT_EQ(desktop.files.folders, std::vector<std::string>{"/data/Favicons"});
}

}  // namespace
}  // namespace orvu
