#include "engine/EngineWorld.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <utility>

namespace orvu {
namespace {

using State = DownloadItem::State;

/// Real downloads into a folder of the test.
class DownloadsTest : public EngineTest {
protected:
    [[nodiscard]] std::unique_ptr<BrowserStore> open(bool isPrivate = false) {
        return std::make_unique<BrowserStore>(services(), isPrivate, Profile::personal());
    }
    /// Shows a page that is one link, follows it, and waits for so many downloads.
    void clickLink(BrowserStore& store, const std::string& attributes, std::size_t count = 1) {
        showLink(store, attributes);
        static_cast<void>(evaluate(store.active()->webView(), "l.click()"));
        ASSERT_TRUE(waitFor([&] { return downloads.items().size() == count; })) << attributes;
    }
    void showLink(BrowserStore& store, const std::string& attributes) {
        const auto page = "/page" + std::to_string(++pages_);
        const auto title = "Page " + std::to_string(pages_);
        server.serve(page, "<title>" + title + "</title><a id=l " + attributes + ">link</a>");
        store.open(server.url(page), BrowserStore::NewTab::no);
        const auto& tab = *store.active();
        ASSERT_TRUE(waitFor([&] { return tab.title() == title && !tab.isLoading(); })) << page;
        settle();
    }
    [[nodiscard]] DownloadItem& newest() const { return *downloads.items().front(); }
    [[nodiscard]] bool waitForState(State state) const {
        return waitFor([&] { return newest().state() == state; });
    }
    [[nodiscard]] bool waitForName(const std::string& name) const {
        return waitFor([&] { return newest().name() == name; });
    }
    /// Waits until something of the newest one has been written.
    [[nodiscard]] bool waitForBytes() const {
        return waitFor([&] {
            if (!std::filesystem::exists(path)) return false;
            const std::filesystem::recursive_directory_iterator all{path};
            return std::ranges::any_of(all, [](const auto& each) {
                return each.is_regular_file() && each.file_size() > 0;
            });
        });
    }
    /// All that lies in the folder, places of files under way too.
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        if (!std::filesystem::exists(path)) return names;
        for (const auto& each : std::filesystem::directory_iterator{path}) {
            names.push_back(each.path().filename().string());
        }
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] std::string contentOf(const std::string& name) const {
        std::ifstream stream{path / name};
        return {std::istreambuf_iterator<char>{stream}, {}};
    }
    static LoopbackServer::Answer attachment(const std::string& body, const std::string& name) {
        return {.body = body,
                .type = "application/octet-stream",
                .headers = {{"Content-Disposition", "attachment; filename=\"" + name + "\""}}};
    }
    /// A body that begins so, and goes on until the server is told otherwise. The engine wants some
    /// bytes before it believes what kind of file they are.
    static LoopbackServer::Answer endless(const std::string& body, const std::string& name) {
        auto answer = attachment(body + std::string(4096, '-'), name);
        answer.drips = true;
        return answer;
    }

    std::filesystem::path path = downloadFolder.path();
    DownloadStore& downloads = services().downloads();

private:
    int pages_ = 0;
};

TEST_F(DownloadsTest, ALinkWithANameOfItsOwnIsSavedUnderThatName) {
    server.serve("/data", LoopbackServer::Answer{.body = "content", .type = "text/plain"});
    const auto store = open();

    clickLink(*store, "href=/data download=notes.txt");

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_EQ(files(), (std::vector<std::string>{"notes.txt"}));
    EXPECT_EQ(contentOf("notes.txt"), "content");
    EXPECT_EQ(newest().fileURL(), path / "notes.txt");
    EXPECT_EQ(newest().fraction(), 1);
}

TEST_F(DownloadsTest, WhatAPageMadeItselfIsSavedToo) {
    const auto store = open();
    showLink(*store, "download=made.txt");

    static_cast<void>(evaluate(store->active()->webView(),
                               "l.href = URL.createObjectURL(new Blob(['made here'])); l.click()"));

    ASSERT_TRUE(waitFor([&] { return !downloads.items().empty(); }));
    ASSERT_TRUE(waitForState(State::done));
    EXPECT_EQ(contentOf("made.txt"), "made here");
}

TEST_F(DownloadsTest, AnAttachmentIsSavedAndTheTabKeepsItsPage) {
    server.serve("/file", attachment(std::string(100'000, 'x'), "big.bin"));
    const auto store = open();

    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForState(State::done));
    settle();

    EXPECT_EQ(contentOf("big.bin"), std::string(100'000, 'x'));
    const auto tab = store->active();
    EXPECT_EQ(tab->url()->absoluteString(), server.url("/page1"));
    EXPECT_EQ(tab->title(), "Page 1");
    EXPECT_FALSE(tab->isLoading());
    EXPECT_EQ(store->visits().size(), 1U);
}

TEST_F(DownloadsTest, AFileOfAKindThatCannotBeShownIsSaved) {
    server.serve("/archive", LoopbackServer::Answer{.body = "PK", .type = "application/zip"});
    const auto store = open();

    clickLink(*store, "href=/archive");

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_EQ(contentOf("archive.zip"), "PK");
}

TEST_F(DownloadsTest, AnEmptyFileIsAWholeFile) {
    server.serve("/file", attachment("", "empty.bin"));
    const auto store = open();

    clickLink(*store, "href=/file");

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_EQ(files(), (std::vector<std::string>{"empty.bin"}));
}

TEST_F(DownloadsTest, AFileWithoutALengthStaysAtNothingUntilItIsWhole) {
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForBytes());
    EXPECT_EQ(newest().fraction(), 0);

    server.completeDrips();

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_TRUE(contentOf("stream.bin").starts_with("head"));
    EXPECT_EQ(files(), (std::vector<std::string>{"stream.bin"}));
}

TEST_F(DownloadsTest, ACancelledOneLeavesNothing) {
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForBytes());

    newest().cancel();
    EXPECT_EQ(newest().state(), State::cancelled);

    EXPECT_TRUE(waitFor([&] { return files().empty(); }));
    settle();
    EXPECT_EQ(newest().state(), State::cancelled);
    EXPECT_EQ(server.dripping(), 0);
}

TEST_F(DownloadsTest, OneCancelledBeforeItsAnswerCameLeavesNothing) {
    server.serve("/file", LoopbackServer::Answer{.held = true});
    const auto store = open();
    clickLink(*store, "href=/file download=a.bin");

    newest().cancel();
    settle();

    EXPECT_EQ(newest().state(), State::cancelled);
    EXPECT_TRUE(files().empty());
}

TEST_F(DownloadsTest, OneThatNobodyTakesIsCancelled) {
    engine.onDownload = nullptr;
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    showLink(*store, "href=/file");

    static_cast<void>(evaluate(store->active()->webView(), "l.click()"));

    ASSERT_TRUE(waitFor([&] { return server.requests("/file") == 1; }));
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
    EXPECT_TRUE(files().empty());
}

TEST_F(DownloadsTest, AnAnswerThatBreaksOffFails) {
    auto answer = attachment("head", "cut.bin");
    answer.declaredLength = 1000;
    server.serve("/file", answer);
    const auto store = open();

    clickLink(*store, "href=/file");

    ASSERT_TRUE(waitForState(State::failed));
    EXPECT_TRUE(waitFor([&] { return files().empty(); }));
    EXPECT_EQ(newest().name(), "cut.bin");
}

/// The engine takes an end between two chunks for the end of the file. Nothing that it tells
/// shows the difference.
TEST_F(DownloadsTest, AnAnswerInChunksThatEndsBetweenTwoOfThemPassesForWhole) {
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForBytes());

    server.breakDrips();

    EXPECT_TRUE(waitForState(State::done));
}

TEST_F(DownloadsTest, AnAnswerThatIsAnErrorFails) {
    const auto store = open();

    clickLink(*store, "href=/missing download=a.bin");

    ASSERT_TRUE(waitForState(State::failed));
    EXPECT_TRUE(files().empty());
}

TEST_F(DownloadsTest, WithoutAFolderItFails) {
    std::ofstream{path} << "a file";
    server.serve("/file", attachment("content", "a.bin"));
    const auto store = open();

    clickLink(*store, "href=/file");

    ASSERT_TRUE(waitForState(State::failed));
    EXPECT_TRUE(std::filesystem::is_regular_file(path));
}

TEST_F(DownloadsTest, TwoOfOneNameBecomeTwoFiles) {
    server.serve("/one", endless("one", "same.bin"));
    server.serve("/two", endless("two", "same.bin"));
    const auto store = open();
    clickLink(*store, "href=/one");
    ASSERT_TRUE(waitForName("same.bin"));
    clickLink(*store, "href=/two", 2);
    ASSERT_TRUE(waitForName("same 2.bin"));

    server.completeDrips();

    ASSERT_TRUE(waitFor([&] { return downloads.running() == nullptr; }));
    EXPECT_EQ(files(), (std::vector<std::string>{"same 2.bin", "same.bin"}));
    EXPECT_TRUE(contentOf("same.bin").starts_with("one"));
    EXPECT_TRUE(contentOf("same 2.bin").starts_with("two"));
}

TEST_F(DownloadsTest, OneOfAPrivateWindowGoesOnAfterItsEnd) {
    server.serve("/file", endless("head", "stream.bin"));
    auto store = open(true);
    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForBytes());

    store.reset();
    settle();
    EXPECT_EQ(newest().state(), State::running);
    server.completeDrips();

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_TRUE(contentOf("stream.bin").starts_with("head"));
}

TEST_F(DownloadsTest, OneOfAProfileIsFollowedLikeAnyOther) {
    server.serve("/file", attachment("content", "a.bin"));
    BrowserStore store{services(), false, {Uuid::random(), "Work", "bag", 1}};

    clickLink(store, "href=/file");

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_EQ(contentOf("a.bin"), "content");
}

TEST_F(DownloadsTest, TheEndOfItsTabDoesNotStopIt) {
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    clickLink(*store, "href=/file");
    ASSERT_TRUE(waitForBytes());

    store->close(*store->active());
    settle();
    server.completeDrips();

    ASSERT_TRUE(waitForState(State::done));
    EXPECT_TRUE(contentOf("stream.bin").starts_with("head"));
}

TEST_F(DownloadsTest, TheEndOfTheStoreEndsWhatRuns) {
    server.serve("/file", endless("head", "stream.bin"));
    const auto store = open();
    auto brief = std::make_unique<DownloadStore>(downloadFolder, fakes.workspace);
    engine.onDownload = [&](std::unique_ptr<Download> download) {
        brief->add(std::move(download));
    };
    showLink(*store, "href=/file");
    static_cast<void>(evaluate(store->active()->webView(), "l.click()"));
    ASSERT_TRUE(waitForBytes());

    engine.onDownload = nullptr;
    brief.reset();

    EXPECT_TRUE(files().empty());
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
    settle();
    EXPECT_TRUE(files().empty());
}

/// Downloads that a page begins by itself.
class PageDownloadsTest : public DownloadsTest {
protected:
    /// Shows a page that runs a script, without a gesture.
    void openPage(const std::string& script) {
        server.serve("/page", "<title>Page</title><script>" + helpers + "setTimeout(() => {" +
                                  script + "}, 50)</script>");
        store->open(server.url("/page"), BrowserStore::NewTab::no);
        ASSERT_TRUE(waitFor([&] { return store->active()->title() == "Page"; }));
    }
    [[nodiscard]] BrowserTab& tab() const { return *store->active(); }
    [[nodiscard]] bool waitForQuestion() const {
        return waitFor([&] { return tab().question().has_value(); });
    }
    /// Waits until the page's script has begun all that it begins.
    [[nodiscard]] bool waitForScript() const {
        return waitFor([&] {
            return evaluate(tab().webView(), "document.body.dataset.done || ''").text == "1";
        });
    }
    [[nodiscard]] bool waitForDone(std::size_t count) const {
        return waitFor(
            [&] { return downloads.items().size() == count && downloads.running() == nullptr; });
    }

    /// `saves` begins so many downloads of "/file", each in a turn of its own; `makes` those of
    /// files that the page made itself.
    /// Each is of a frame of its own: in one the engine drops a click when the next one comes
    /// before it looked at it.
    const std::string helpers =
        "const click = (href, name, page = document) => { const link = page.createElement('a');"
        "link.href = href; link.download = name; link.click(); };"
        "const clickInFrame = (href, name) => { const frame = document.createElement('iframe');"
        "document.body.append(frame); click(href, name, frame.contentDocument); };"
        "const turns = async (count, each) => { for (let i = 0; i < count; i++) { each(i);"
        "await new Promise(done => setTimeout(done, 20)); } document.body.dataset.done = 1; };"
        "const saves = count => turns(count, i => clickInFrame('/file?' + i, i + '.txt'));"
        "const makes = count => turns(count, i => clickInFrame("
        "URL.createObjectURL(new Blob(['made ' + i])), i + '.txt'));";
    std::unique_ptr<BrowserStore> store = open();
};

TEST_F(PageDownloadsTest, TheFirstGoesAndTheOthersWait) {
    server.serve("/file", LoopbackServer::Answer{.body = "content", .type = "text/plain"});

    openPage("saves(3)");

    ASSERT_TRUE(waitForQuestion());
    EXPECT_EQ(tab().question()->text, "“127.0.0.1” wants to download more files");
    ASSERT_TRUE(waitForDone(1));
    settle();
    EXPECT_EQ(files(), (std::vector<std::string>{"0.txt"}));
}

TEST_F(PageDownloadsTest, AllowedOnesAreSavedWithTheirNames) {
    openPage("makes(4)");
    ASSERT_TRUE(waitForQuestion());
    settle();

    tab().answer(*tab().question(), PageAnswer::allow);

    ASSERT_TRUE(waitForDone(4));
    EXPECT_EQ(files(), (std::vector<std::string>{"0.txt", "1.txt", "2.txt", "3.txt"}));
    EXPECT_EQ(contentOf("3.txt"), "made 3");
    EXPECT_FALSE(tab().question());
}

TEST_F(PageDownloadsTest, RefusedOnesLeaveNothing) {
    server.serve("/file", endless("head", "stream.bin"));
    openPage("saves(4)");
    ASSERT_TRUE(waitForQuestion());
    settle();

    tab().answer(*tab().question(), PageAnswer::refuse);
    settle();

    EXPECT_EQ(downloads.items().size(), 1U);
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 1; }));
    EXPECT_FALSE(tab().question());
}

TEST_F(PageDownloadsTest, ThoseOfFramesWaitToo) {
    server.serve("/file", attachment("content", "a.bin"));

    openPage(
        "for (let i = 0; i < 3; i++) { const frame = document.createElement('iframe');"
        "frame.src = '/file?' + i; document.body.append(frame); }");

    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitForDone(1));
    tab().answer(*tab().question(), PageAnswer::allow);
    EXPECT_TRUE(waitForDone(3));
}

TEST_F(PageDownloadsTest, TheSiteAnswersOthersWhileManyWait) {
    server.serve("/file",
                 LoopbackServer::Answer{.body = std::string(3'000'000, 'x'), .type = "text/plain"});
    server.serve("/other", "<title>Other</title>");
    openPage("saves(20)");
    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitFor([&] { return server.requests("/file") >= 10; }));

    auto& other = store->newTab(url("/other"), BrowserStore::Select::no);

    EXPECT_TRUE(waitFor([&] { return other.title() == "Other"; }));
}

TEST_F(PageDownloadsTest, ManyOfTheSiteAreSavedOnceAllowed) {
    server.serve("/file", LoopbackServer::Answer{.body = "content", .type = "text/plain"});
    openPage("saves(20)");
    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitFor(
        [&] { return evaluate(tab().webView(), "document.body.dataset.done || ''").text == "1"; }));
    settle();

    tab().answer(*tab().question(), PageAnswer::allow);

    EXPECT_TRUE(waitForDone(20));
}

TEST_F(PageDownloadsTest, AFileThatThePersonAsksForDoesNotWait) {
    server.serve("/file", attachment("content", "a.bin"));
    openPage("makes(3)");
    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitForScript());
    ASSERT_TRUE(waitForDone(1));

    store->open(server.url("/file"), BrowserStore::NewTab::no);

    EXPECT_TRUE(waitForDone(2));
    EXPECT_TRUE(tab().question());
}

TEST_F(PageDownloadsTest, WithinAGestureOneGoesAndThenTheFirstOfThePage) {
    showLink(*store, "");

    static_cast<void>(evaluate(tab().webView(), helpers + "makes(4), ''"));

    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitForDone(2));
    settle();
    EXPECT_EQ(files(), (std::vector<std::string>{"0.txt", "1.txt"}));
}

TEST_F(PageDownloadsTest, TheQuestionGoesWithItsPage) {
    openPage("makes(3)");
    ASSERT_TRUE(waitForQuestion());
    ASSERT_TRUE(waitForScript());
    server.serve("/next", "<title>Next</title>");

    store->open(server.url("/next"), BrowserStore::NewTab::no);

    EXPECT_TRUE(waitFor([&] { return tab().title() == "Next"; }));
    EXPECT_FALSE(tab().question());
    settle();
    EXPECT_EQ(downloads.items().size(), 1U);
}

TEST_F(PageDownloadsTest, APageThatIsLoadedByItselfAgainAndAgainAsks) {
    server.serve("/again", "<title>Again</title><script>" + helpers +
                               "click(URL.createObjectURL(new Blob(['x'])), 'x.txt');"
                               "setTimeout(() => location.reload(), 100)</script>");

    store->open(server.url("/again"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return server.requests("/again") > 4; }));

    EXPECT_EQ(downloads.items().size(), 1U);
}

TEST_F(PageDownloadsTest, TheEndOfTheTabDropsWhatWaits) {
    server.serve("/file", endless("head", "stream.bin"));
    openPage("saves(3)");
    ASSERT_TRUE(waitForQuestion());

    store->close(tab());

    EXPECT_TRUE(waitFor([&] { return server.dripping() == 1; }));
    EXPECT_EQ(downloads.items().size(), 1U);
}

/// The main loop goes on between them: the longest that it is away is what a person would feel.
TEST_F(PageDownloadsTest, AFloodIsBoundedAndTheWindowAnswers) {
    openPage(
        "const made = URL.createObjectURL(new Blob(['x']));"
        "for (let i = 0; i < 130; i++) clickInFrame(made, i + '.txt');"
        "document.title = 'Flooded'");
    std::chrono::milliseconds longest{0};

    const bool flooded = waitFor([&, last = std::chrono::steady_clock::now()]() mutable {
        const auto now = std::chrono::steady_clock::now();
        const auto away = now - std::exchange(last, now);
        longest = std::max(longest, std::chrono::duration_cast<std::chrono::milliseconds>(away));
        return tab().title() == "Flooded";
    });

    EXPECT_TRUE(flooded);
    RecordProperty("longest", static_cast<int>(longest.count()));
    EXPECT_LT(longest.count(), 1000);  // a machine that is busy otherwise
    ASSERT_TRUE(waitForQuestion());    // the title takes another way and may come first
    tab().answer(*tab().question(), PageAnswer::allow);
    EXPECT_TRUE(waitFor([&] {  // what comes after the answer is not held back
        return downloads.items().size() > DownloadQuestions::waitingLimit && !downloads.running();
    })) << downloads.items().size()
        << (downloads.running() ? ", and one still runs" : "");
}

}  // namespace
}  // namespace orvu
