#include "shell/BrowserWindowController.h"

#include "fakes/FakeBrowserWindow.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

class BrowserWindowControllerTest : public StoreTest {
protected:
    using Private = BrowserWindowController::Private;

    BrowserWindowControllerTest() {
        world.storeRecords<Profile>("orvuProfiles", {Profile::personal(), world.work});
    }
    /// Opens a window and gives it, so that a test may change it.
    FakeBrowserWindow& openWindow(Private isPrivate = Private::no,
                                  const std::optional<Profile>& profile = std::nullopt) {
        controller().newWindow(isPrivate, profile, {});
        return *screen.windows.back();
    }
    [[nodiscard]] BrowserWindowController& controller() {
        if (!controller_) {
            services_ = std::make_unique<AppServices>(world.platform());
            controller_ = std::make_unique<BrowserWindowController>(*services_, screen.factory());
        }
        return *controller_;
    }
    [[nodiscard]] ProfileStore& profiles() { return services_->profiles(); }
    /// The program ends and starts anew with what is stored.
    void restart() {
        controller_.reset();
        services_.reset();
    }
    [[nodiscard]] BrowserStore& storeAt(std::size_t index) {
        return *controller().windows().at(index).store;
    }

    FakeScreen screen;

private:
    std::unique_ptr<AppServices> services_;
    std::unique_ptr<BrowserWindowController> controller_;
};

// --- New windows ------------------------------------------------------------------------------

TEST_F(BrowserWindowControllerTest, AWindowThatOpensAloneRemembersItsFrameAndIsPresentedLast) {
    const FakeBrowserWindow& window = openWindow();

    EXPECT_EQ(window.calls, (Strings{"setContent", "rememberFrame", "present"}));
    EXPECT_EQ(window.content, controller().windows()[0].store);
    EXPECT_EQ(window.traits.title, "Orvu");
    EXPECT_FALSE(window.traits.isPrivate);
    EXPECT_FALSE(storeAt(0).isPrivate());
    EXPECT_EQ(storeAt(0).profile(), Profile::personal());
}

TEST_F(BrowserWindowControllerTest, APrivateWindowThatOpensAloneKeepsNoFrame) {
    const FakeBrowserWindow& window = openWindow(Private::yes);

    EXPECT_EQ(window.calls, (Strings{"setContent", "present"}));
    EXPECT_EQ(window.traits.title, "Orvu — Private");
    EXPECT_TRUE(window.traits.isPrivate);
    EXPECT_TRUE(storeAt(0).isPrivate());
}

TEST_F(BrowserWindowControllerTest, AnAddressOpensPrivatelyAsTheOnlyTabOfAWindow) {
    openWindow();

    controller().openPrivately(url(a));

    ASSERT_EQ(controller().windows().size(), 2U);
    EXPECT_TRUE(storeAt(1).isPrivate());
    EXPECT_EQ(addresses(storeAt(1).tabs()), Strings{a});
}

TEST_F(BrowserWindowControllerTest, ANewWindowCascadesFromTheNewestVisibleOne) {
    openWindow().corner = Point{10, 20};
    openWindow().corner = Point{100, 200};
    FakeBrowserWindow& hidden = openWindow();
    hidden.corner = Point{500, 500};
    hidden.visible = false;

    const FakeBrowserWindow& window = openWindow(Private::yes);

    EXPECT_EQ(window.calls, (Strings{"setContent", "placeAt 128 228", "present"}));
}

TEST_F(BrowserWindowControllerTest, BesideAVisibleWindowNoFrameIsRememberedEvenWithoutAPlace) {
    openWindow().corner = std::nullopt;

    const FakeBrowserWindow& window = openWindow();

    EXPECT_EQ(window.calls, (Strings{"setContent", "present"}));
}

TEST_F(BrowserWindowControllerTest, BesideHiddenWindowsAWindowOpensAlone) {
    openWindow().visible = false;

    const FakeBrowserWindow& window = openWindow();

    EXPECT_EQ(window.calls, (Strings{"setContent", "rememberFrame", "present"}));
}

TEST_F(BrowserWindowControllerTest, TheAddressesStandBehindTheRestoredTabsTheLastInFront) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt}});

    controller().newWindow(Private::no, std::nullopt, {url(b), url(c)});

    EXPECT_EQ(addresses(storeAt(0).tabs()), (Strings{a, b, c}));
    EXPECT_EQ(front(storeAt(0)), c);
}

TEST_F(BrowserWindowControllerTest, AWindowTakesTheGivenProfileElseTheOneChosenLast) {
    openWindow(Private::no, world.work);
    openWindow();
    world.defaults.setString("lastProfile", world.work.id.string());
    openWindow();
    openWindow(Private::yes);
    openWindow(Private::no, Profile::personal());

    std::vector<Uuid> profiles;
    for (const auto& entry : controller().windows()) profiles.push_back(entry.store->profile().id);

    EXPECT_EQ(profiles, (std::vector{world.work.id, Profile::personalID, world.work.id,
                                     world.work.id, Profile::personalID}));
}

TEST_F(BrowserWindowControllerTest, AnUnknownOrSpoiledLastProfileMeansThePersonalOne) {
    for (const auto& text : {Uuid::random().string(), std::string{"no identity"}, std::string{}}) {
        world.defaults.setString("lastProfile", text);
        openWindow();
        EXPECT_EQ(controller().windows().back().store->profile(), Profile::personal());
    }
    world.defaults.setInteger("lastProfile", 3);
    openWindow();
    EXPECT_EQ(controller().windows().back().store->profile(), Profile::personal());
}

TEST_F(BrowserWindowControllerTest, OpeningWindowsNeverWritesTheLastProfile) {
    openWindow(Private::no, world.work);
    openWindow(Private::yes, world.work);

    EXPECT_FALSE(world.defaults.hasObject("lastProfile"));
}

// --- The front store --------------------------------------------------------------------------

TEST_F(BrowserWindowControllerTest, WithoutWindowsThereIsNoFrontStore) {
    EXPECT_EQ(controller().frontStore(), nullptr);
    EXPECT_FALSE(controller().hasVisibleWindows());
}

TEST_F(BrowserWindowControllerTest, TheFrontStoreIsThatOfTheWindowWithTheKeyboard) {
    openWindow().key = true;
    openWindow();

    EXPECT_EQ(controller().frontStore(), controller().windows()[0].store);
}

TEST_F(BrowserWindowControllerTest, WhileAnotherKindOfWindowHasTheKeyboardTheNewestIsInFront) {
    openWindow();
    openWindow();

    EXPECT_EQ(controller().frontStore(), controller().windows()[1].store);
}

TEST_F(BrowserWindowControllerTest, TheNewestVisibleWindowIsPresented) {
    FakeBrowserWindow& first = openWindow();
    FakeBrowserWindow& second = openWindow();
    second.visible = false;
    first.calls.clear();
    second.calls.clear();

    controller().presentNewest();
    first.visible = false;
    controller().presentNewest();

    EXPECT_EQ(first.calls, Strings{"present"});
    EXPECT_TRUE(second.calls.empty());
}

// --- Addresses from other programs --------------------------------------------------------------

TEST_F(BrowserWindowControllerTest, AddressesOpenInTheNewerOfTwoOrdinaryWindows) {
    openWindow();
    FakeBrowserWindow& newer = openWindow();
    newer.calls.clear();
    const ChangeCounter changes{storeAt(1)};

    controller().open({url(a), url(b)});

    EXPECT_EQ(addresses(storeAt(0).tabs()), Strings{""});
    EXPECT_EQ(addresses(storeAt(1).tabs()), (Strings{"", a, b}));
    EXPECT_EQ(front(storeAt(1)), b);
    EXPECT_EQ(newer.calls, Strings{"present"});
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(BrowserWindowControllerTest, AddressesNeverOpenInAPrivateWindow) {
    openWindow(Private::yes);

    controller().open({url(a)});

    ASSERT_EQ(controller().windows().size(), 2U);
    EXPECT_EQ(addresses(storeAt(0).tabs()), Strings{""});
    EXPECT_EQ(addresses(storeAt(1).tabs()), (Strings{"", a}));
    EXPECT_FALSE(storeAt(1).isPrivate());
}

TEST_F(BrowserWindowControllerTest, AnOlderOrdinaryWindowWinsOverANewerPrivateOne) {
    openWindow();
    openWindow(Private::yes);

    controller().open({url(a)});

    EXPECT_EQ(controller().windows().size(), 2U);
    EXPECT_EQ(addresses(storeAt(0).tabs()), (Strings{"", a}));
}

TEST_F(BrowserWindowControllerTest, AHiddenWindowIsNotThereForAddresses) {
    openWindow().visible = false;

    controller().open({url(a)});

    ASSERT_EQ(controller().windows().size(), 2U);
    EXPECT_EQ(addresses(storeAt(0).tabs()), Strings{""});
}

TEST_F(BrowserWindowControllerTest, OnlyWebAddressesAreTakenInAnyCaseOfTheScheme) {
    controller().open({url("file:///etc/passwd"), url("about:blank"), url("javascript:1"),
                       url("a.example"), url("ftp://a.example/")});
    EXPECT_TRUE(controller().windows().empty());

    controller().open({url("file:///x"), url("HTTPS://a.example/"), url("http://b.example/")});

    EXPECT_EQ(addresses(storeAt(0).tabs()),
              (Strings{"", "HTTPS://a.example/", "http://b.example/"}));
}

TEST_F(BrowserWindowControllerTest, NoAddressesOpenNothing) {
    controller().open({});

    EXPECT_TRUE(controller().windows().empty());
}

TEST_F(BrowserWindowControllerTest, TheWindowMayCloseWhileItTakesAddresses) {
    FakeBrowserWindow& window = openWindow();
    storeAt(0).connectChanged([&] {
        if (!screen.windows.empty()) window.close();
    });

    controller().open({url(a), url(b)});

    EXPECT_TRUE(controller().windows().empty());
    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserWindowControllerTest, WindowsMayOpenWhileOneTakesAddresses) {
    openWindow();
    int opened = 0;
    storeAt(0).connectChanged([&] {
        if (++opened == 1) {
            for (int number = 0; number < 20; ++number) openWindow(Private::yes);
        }
    });

    controller().open({url(a), url(b)});

    EXPECT_EQ(controller().windows().size(), 21U);
    EXPECT_EQ(addresses(storeAt(0).tabs()), (Strings{"", a, b}));
    EXPECT_EQ(screen.windows[0]->calls.back(), "present");
}

// --- Profiles ---------------------------------------------------------------------------------

TEST_F(BrowserWindowControllerTest, SwitchingTheProfileChangesTheContentAloneAndIsRemembered) {
    world.storeRecords<SavedTab>(scopedKey("browserSession", world.work),
                                 {{url(c), false, std::nullopt}});
    FakeBrowserWindow& window = openWindow();
    storeAt(0).newTab(url(a), Select::yes);
    window.calls.clear();
    const std::weak_ptr<BrowserStore> previous = controller().windows()[0].store;

    controller().switchProfile(storeAt(0), world.work);

    EXPECT_EQ(window.calls, Strings{"setContent"});
    EXPECT_EQ(window.content, controller().windows()[0].store);
    EXPECT_EQ(storeAt(0).profile(), world.work);
    EXPECT_EQ(addresses(storeAt(0).tabs()), Strings{c});
    EXPECT_TRUE(previous.expired());
    EXPECT_EQ(world.defaults.string("lastProfile"), world.work.id.string());
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
}

TEST_F(BrowserWindowControllerTest, TheNextWindowOpensInTheProfileSwitchedToAlsoAfterARestart) {
    openWindow();
    controller().switchProfile(storeAt(0), world.work);

    openWindow();
    EXPECT_EQ(storeAt(1).profile(), world.work);
    restart();
    openWindow();

    EXPECT_EQ(storeAt(0).profile(), world.work);
}

TEST_F(BrowserWindowControllerTest, APrivateWindowThatSwitchesBecomesOrdinaryButKeepsItsLooks) {
    const FakeBrowserWindow& window = openWindow(Private::yes);

    controller().switchProfile(storeAt(0), world.work);

    EXPECT_FALSE(storeAt(0).isPrivate());
    EXPECT_TRUE(window.traits.isPrivate);
    EXPECT_EQ(window.traits.title, "Orvu — Private");
}

TEST_F(BrowserWindowControllerTest, APageThatAsksIsAnsweredBeforeItsWindowSwitches) {
    FakeBrowserWindow& window = openWindow();
    auto& asking = page(storeAt(0).newTab(url(a), Select::yes));
    asking.asksBeforeClosing = true;
    storeAt(0).newTab(url(b), Select::yes);
    window.calls.clear();

    controller().switchProfile(storeAt(0), world.work);
    asking.askBeforeClosing();
    EXPECT_EQ(front(storeAt(0)), a);
    EXPECT_EQ(window.calls, Strings{"present"});
    EXPECT_EQ(storeAt(0).profile(), Profile::personal());
    asking.answerDialog({.isAccepted = true});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(storeAt(0).profile(), world.work);
}

TEST_F(BrowserWindowControllerTest, APageThatStaysKeepsTheProfileOfItsWindow) {
    openWindow();
    auto& asking = page(storeAt(0).newTab(url(a), Select::yes));
    asking.asksBeforeClosing = true;
    controller().switchProfile(storeAt(0), world.work);
    asking.askBeforeClosing();

    asking.answerDialog({});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(storeAt(0).profile(), Profile::personal());
}

TEST_F(BrowserWindowControllerTest, APageThatAsksIsSeenAlsoWhereTheLibraryStoodInItsPlace) {
    openWindow();
    auto& asking = page(storeAt(0).newTab(url(a), Select::yes));
    asking.asksBeforeClosing = true;
    storeAt(0).setLibrarySection(LibrarySection::history);

    controller().switchProfile(storeAt(0), world.work);
    asking.askBeforeClosing();

    EXPECT_FALSE(storeAt(0).librarySection());
}

TEST_F(BrowserWindowControllerTest, AProfileThatIsDeletedWhilePagesAreAskedIsNotShown) {
    openWindow();
    auto& asking = page(storeAt(0).newTab(url(a), Select::yes));
    asking.asksBeforeClosing = true;
    controller().switchProfile(storeAt(0), world.work);
    asking.askBeforeClosing();

    profiles().remove(world.work);
    asking.answerDialog({.isAccepted = true});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(storeAt(0).profile(), Profile::personal());
    EXPECT_EQ(world.engine.stores.back(), WebsiteDataStore::defaultDataStore());
}

TEST_F(BrowserWindowControllerTest, AStoreWithoutAWindowCannotSwitch) {
    openWindow();
    const auto stranger = openStore();

    controller().switchProfile(*stranger, world.work);

    EXPECT_EQ(storeAt(0).profile(), Profile::personal());
    EXPECT_FALSE(world.defaults.hasObject("lastProfile"));
}

TEST_F(BrowserWindowControllerTest, ThePreviousStoreLivesUntilTheWindowShowsTheNewOne) {
    FakeBrowserWindow& window = openWindow();
    const std::weak_ptr<BrowserStore> previous = controller().windows()[0].store;
    window.content.reset();  // a view that only refers to the store
    bool alive = false;
    window.whenContentIsSet = [&] { alive = !previous.expired(); };

    controller().switchProfile(storeAt(0), world.work);

    EXPECT_TRUE(alive);
    EXPECT_TRUE(previous.expired());
}

TEST_F(BrowserWindowControllerTest, TheProfileOfTheStoreItselfMayBeGiven) {
    openWindow(Private::no, world.work);

    controller().switchProfile(storeAt(0), storeAt(0).profile());

    EXPECT_EQ(storeAt(0).profile(), world.work);
}

// --- Closing ----------------------------------------------------------------------------------

TEST_F(BrowserWindowControllerTest, AWindowThatClosesGoesWithItsStoreAndItsPages) {
    openWindow();
    FakeBrowserWindow& window = openWindow();
    const std::weak_ptr<BrowserStore> store = controller().windows()[1].store;

    window.close();

    EXPECT_EQ(controller().windows().size(), 1U);
    EXPECT_EQ(screen.windows.size(), 1U);
    EXPECT_TRUE(store.expired());
    EXPECT_EQ(world.engine.views.size(), 1U);
}

TEST_F(BrowserWindowControllerTest, ClosingWritesNothing) {
    FakeBrowserWindow& window = openWindow();
    storeAt(0).newTab(url(a), Select::yes);
    const auto before = world.defaults.values;
    world.defaults.written.clear();

    window.close();

    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(world.defaults.values, before);
    EXPECT_EQ(controller().frontStore(), nullptr);
}

TEST_F(BrowserWindowControllerTest, TheWindowsThatStayCloseOneByOneInAnyOrder) {
    openWindow();
    openWindow();
    openWindow();

    screen.windows[1]->close();
    screen.windows[0]->close();
    EXPECT_EQ(controller().windows()[0].window.get(), screen.windows[0]);
    screen.windows[0]->close();

    EXPECT_TRUE(controller().windows().empty());
    EXPECT_TRUE(screen.windows.empty());
}

}  // namespace
}  // namespace orvu
