#include "shell/BrowserView.h"

#include "core/Records.h"

#include "support/ViewWorld.h"

namespace orvu {
namespace {

class BrowserViewTest : public ViewTest {
protected:
    /// A camera question of the tab in front.
    static void askForCamera(BrowserStore& store) {
        store.active()->requestMediaCapture(
            {MediaCaptureType::camera, "a.example", [](MediaCaptureRequest::Answer) {}});
    }
};

TEST_F(BrowserViewTest, EverySwitchIsOffAtFirst) {
    const auto view = viewOf(openStoreWith({a}));

    EXPECT_FALSE(view->commandOpen.get());
    EXPECT_EQ(view->query.get(), "");
    EXPECT_FALSE(view->kestoOpen.get());
    EXPECT_FALSE(view->findOpen.get());
    EXPECT_FALSE(view->narrow.get());
    EXPECT_EQ(view->pendingQuestion.get(), std::nullopt);
    EXPECT_FALSE(view->askUpdates.get());
    EXPECT_EQ(view->fullscreenTab.get(), std::nullopt);
    EXPECT_FALSE(view->sheetOpen.get());
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserViewTest, NarrowColumnIs52PointsWideAndTheOrdinaryOne228) {
    const auto view = viewOf(openStoreWith({a}));

    EXPECT_EQ(view->columnWidth(), 228);
    view->narrow.set(true);

    EXPECT_EQ(view->columnWidth(), 52);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserViewTest, ColumnOfOneWindowLeavesAnothersAlone) {
    const auto one = viewOf(openStoreWith({a}));
    const auto other = viewOf(openStoreWith({b}));

    one->narrow.set(true);

    EXPECT_FALSE(other->narrow.get());
}

// --- Profiles -----------------------------------------------------------------------------------

TEST_F(BrowserViewTest, APrivateWindowHasNoProfilesToSwitchTo) {
    const auto view = viewOf(std::make_shared<BrowserStore>(*services, true, Profile::personal()));

    EXPECT_EQ(view->profileSwitcher(), nullptr);
}

TEST_F(BrowserViewTest, AChosenProfileIsShownWhenTheViewThatWasPressedIsDone) {
    const auto view = viewOf(openStoreWith({a}));

    view->profileSwitcher()->switchTo(world.work.id);
    EXPECT_TRUE(asked.empty());
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(asked, Strings{"switch " + world.work.name});
}

TEST_F(BrowserViewTest, AViewThatEndsSwitchesNoMore) {
    auto view = viewOf(openStoreWith({a}));
    view->profileSwitcher()->switchTo(world.work.id);

    view.reset();
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_TRUE(asked.empty());
}

TEST_F(BrowserViewTest, AnEditedProfileShowsAtOnceAndADeletedOneStaysAsItWas) {
    const auto view = viewOf(std::make_shared<BrowserStore>(*services, false, world.work));
    Profile edited = world.work;
    edited.name = "Studio";
    edited.color = 5;

    services->profiles().update(edited);
    EXPECT_EQ(view->profile(), edited);
    services->profiles().remove(edited);

    EXPECT_EQ(view->profile(), world.work);
}

TEST_F(BrowserViewTest, ASheetIsOpenWhileAProfileIsMadeChangedOrAboutToGo) {
    const auto view = viewOf(openStoreWith({a}));
    ProfileSwitcher& switcher = *view->profileSwitcher();

    switcher.create();
    EXPECT_TRUE(view->sheetOpen.get());
    switcher.editor()->cancel();
    EXPECT_FALSE(view->sheetOpen.get());
    switcher.edit(Profile::personalID);
    EXPECT_TRUE(view->sheetOpen.get());
    switcher.editor()->cancel();
    EXPECT_FALSE(view->sheetOpen.get());
    switcher.confirmDelete(world.work.id);
    EXPECT_TRUE(view->sheetOpen.get());
    switcher.answer(ProfileSwitcher::Question::Answer::cancel);
    EXPECT_FALSE(view->sheetOpen.get());
}

// --- The notch ----------------------------------------------------------------------------------

TEST_F(BrowserViewTest, AnAddressThatNoFieldCanHoldIsNotEdited) {
    const auto view = viewOf(openStoreWith({a}));
    view->editAddress(std::string(storedAddressLimit, 'a'));
    EXPECT_EQ(view->query.get().size(), storedAddressLimit);

    view->editAddress(std::string(storedAddressLimit + 1, 'a'));

    EXPECT_EQ(view->query.get(), "");
    EXPECT_TRUE(view->commandOpen.get());
}

TEST_F(BrowserViewTest, EditingTheAddressSetsTheTextBeforeTheNotchOpens) {
    const auto view = viewOf(openStoreWith({a}));
    std::string textAtOpening;
    view->commandOpen.connectChanged([&] { textAtOpening = view->query.get(); });

    view->editAddress("typed");

    EXPECT_TRUE(view->commandOpen.get());
    EXPECT_EQ(textAtOpening, "typed");
    EXPECT_EQ(asked, Strings{"edit typed"});
}

TEST_F(BrowserViewTest, EditingInAnOpenNotchGivesItsFieldTheKeyboardAgain) {
    const auto view = viewOf(openStoreWith({a}));
    view->editAddress("typed");

    view->editAddress("typed");

    EXPECT_EQ(asked, (Strings{"edit typed", "edit typed"}));
}

TEST_F(BrowserViewTest, QuestionClosesTheNotchAndWaitsForThePanel) {
    const auto view = viewOf(openStoreWith({a}));
    view->editAddress("why");

    view->ask("why");

    EXPECT_FALSE(view->commandOpen.get());
    EXPECT_TRUE(view->kestoOpen.get());
    EXPECT_EQ(view->pendingQuestion.get(), "why");
}

TEST_F(BrowserViewTest, FindAgainOpensAClosedBarAndGoesOnInAnOpenOne) {
    const auto view = viewOf(openStoreWith({a}));

    view->findAgain(FindDirection::previous);
    EXPECT_TRUE(view->findOpen.get());
    view->findAgain(FindDirection::previous);
    view->findAgain(FindDirection::next);

    EXPECT_EQ(asked, (Strings{"find", "find previous", "find next"}));
}

TEST_F(BrowserViewTest, EscapeClosesTheNotchAndTheSearchBarTogether) {
    const auto view = viewOf(openStoreWith({a}));
    view->editAddress("typed");
    view->openFind();

    EXPECT_TRUE(view->endEditing());

    EXPECT_FALSE(view->commandOpen.get());
    EXPECT_FALSE(view->findOpen.get());
    EXPECT_EQ(view->query.get(), "typed");
}

TEST_F(BrowserViewTest, EscapeWithNothingOpenIsThePages) {
    const auto view = viewOf(openStoreWith({a}));
    world.engine.views.front()->finish("a");

    EXPECT_FALSE(view->endEditing());
}

TEST_F(BrowserViewTest, EscapeWithNothingOpenStopsALoad) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    const auto view = viewOf(store);
    view->openFind();

    EXPECT_TRUE(view->endEditing());
    EXPECT_TRUE(store->active()->isLoading()) << "the search bar comes first";
    EXPECT_TRUE(view->endEditing());

    EXPECT_FALSE(store->active()->isLoading());
    EXPECT_EQ(world.engine.views.front()->calls.back(), "stopLoading");
}

TEST_F(BrowserViewTest, EscapeClosesABarThatWaitsBehindAPairAndIsThePagesAllTheSame) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});
    const auto view = viewOf(store);
    view->openFind();
    store->toggleSideBySide();
    for (auto* const page : world.engine.views) page->finish("page");

    EXPECT_FALSE(view->endEditing());

    EXPECT_FALSE(view->findOpen.get());
}

TEST_F(BrowserViewTest, EscapeDismissesWhatThePageAsksForOnlyWhenNothingElseIsOpen) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    const auto view = viewOf(store);
    askForCamera(*store);
    view->openFind();

    EXPECT_TRUE(view->endEditing());
    EXPECT_TRUE(store->active()->captureQuestion());
    EXPECT_TRUE(view->endEditing());

    EXPECT_FALSE(store->active()->captureQuestion());
}

TEST_F(BrowserViewTest, EscapeCancelsADialogOfThePageBeforeWhatThePageAsksForBesideIt) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    const auto view = viewOf(store);
    askForCamera(*store);
    std::optional<PageDialogAnswer> answer;
    page(*store->active())
        .dialogs()
        .ask({.kind = PageDialog::Kind::confirm}, Date{},
             [&](const PageDialogAnswer& given) { answer = given; });

    EXPECT_TRUE(view->endEditing());

    EXPECT_EQ(answer, PageDialogAnswer{});
    EXPECT_TRUE(store->active()->captureQuestion());
}

TEST_F(BrowserViewTest, TheQuestionAboutUpdatesComesFourSecondsAfterTheWindow) {
    const auto view = viewOf(openStoreWith({a}));
    services->settings().launchCount.set(2);  // the first window's launch is counted behind it
    world.loop.advance(std::chrono::milliseconds{3999});
    EXPECT_FALSE(view->askUpdates.get());

    world.loop.advance(std::chrono::milliseconds{1});

    EXPECT_TRUE(view->askUpdates.get());
}

TEST_F(BrowserViewTest, APrivateWindowAsksNothingAboutUpdates) {
    services->settings().launchCount.set(2);
    const auto view = viewOf(openPrivateStore());

    world.loop.advance(std::chrono::seconds{60});

    EXPECT_FALSE(view->askUpdates.get());
}

TEST_F(BrowserViewTest, SwitchingTheProfileMayEndTheView) {
    std::unique_ptr<BrowserView> view;
    const auto end = [&](const Profile& profile) {
        view.reset();
        asked.push_back(profile.name);
    };
    view = std::make_unique<BrowserView>(openStoreWith({a}), shared(), window, end,
                                         BrowserView::Narrow::yes);
    EXPECT_TRUE(view->narrow.get());

    view->switchProfile(world.work);

    EXPECT_EQ(asked, Strings{"Work"});
}

TEST_F(BrowserViewTest, ASelectionIsSearchedForInATabInFront) {
    const auto view = viewOf(openStoreWith({a}));

    view->menuChosen({PageMenuChoice::Kind::search, "a.example"});

    ASSERT_EQ(view->store().tabs().size(), 2U);
    const auto front = view->store().active();
    EXPECT_EQ(front->url()->absoluteString(), "https://www.google.com/search?q=a.example");
}

TEST_F(BrowserViewTest, ASelectionIsSearchedForWithTheChosenEngine) {
    services->settings().searchEngine.set(Prefs::Engine::ecosia);
    const auto view = viewOf(openStoreWith({a}));

    view->menuChosen({PageMenuChoice::Kind::search, "snail & food"});

    EXPECT_EQ(view->store().active()->url()->host(), "www.ecosia.org");
    EXPECT_EQ(view->store().active()->url()->queryItem("q"), "snail & food");
}

TEST_F(BrowserViewTest, NothingIsSearchedForWithoutAText) {
    const auto view = viewOf(openStoreWith({a}));

    view->menuChosen({PageMenuChoice::Kind::search, ""});

    EXPECT_EQ(view->store().tabs().size(), 1U);
}

TEST_F(BrowserViewTest, ALinkOpensInAPrivateWindowOnlyIfItIsOfTheWeb) {
    const auto view = viewOf(openStoreWith({a}));

    view->menuChosen({PageMenuChoice::Kind::openPrivately, b});
    view->menuChosen({PageMenuChoice::Kind::openPrivately, "file:///etc/passwd"});
    view->menuChosen({PageMenuChoice::Kind::openPrivately, "javascript:1"});

    EXPECT_EQ(window.calls, Strings{"openPrivately " + std::string{b}});
    EXPECT_EQ(view->store().tabs().size(), 1U);
}

}  // namespace
}  // namespace orvu
