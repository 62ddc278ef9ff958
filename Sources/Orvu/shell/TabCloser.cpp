#include "shell/TabCloser.h"

#include <utility>

namespace orvu {
namespace {

/// Shows a tab while its page asks whether it may be left.
class ShowsAsking {
public:
    ShowsAsking(const std::weak_ptr<BrowserTab>& tab, TabCloser::Show show)
        : tab_(tab), show_(std::move(show)) {
        const auto live = tab_.lock();
        if (!live) return;
        watch_ = live->webView().dialogs().connectChanged([this] { look(); });
        look();
    }
    ShowsAsking(const ShowsAsking&) = delete;
    ShowsAsking& operator=(const ShowsAsking&) = delete;

private:
    void look() {
        const auto live = tab_.lock();
        const auto* const shown = live ? live->webView().dialogs().current() : nullptr;
        if (shown && shown->dialog.kind == PageDialog::Kind::beforeUnload) show_(*live);
    }

    const std::weak_ptr<BrowserTab> tab_;
    const TabCloser::Show show_;
    ScopedConnection watch_;
};

Task<bool> allMayGo(TabCloser::Tabs tabs, TabCloser::Show show, MainLoop* loop) {
    struct Asked {
        std::weak_ptr<BrowserTab> tab;
        Future<bool> answer;
    };
    std::vector<Asked> asked;
    for (const auto& tab : tabs) {
        if (const auto live = tab.lock()) asked.emplace_back(tab, live->webView().mayClose());
    }
    bool hasWaited = false;
    for (auto& each : asked) {
        const bool isWaiting = !each.answer.await_ready();
        hasWaited = hasWaited || isWaiting;
        const ShowsAsking shows{isWaiting ? each.tab : std::weak_ptr<BrowserTab>{}, show};
        if (!co_await each.answer) co_return false;
    }
    // Whoever answered stands in the middle of that still.
    if (hasWaited) co_await Sleep{*loop, std::chrono::milliseconds{0}};
    co_return true;
}

Task<void> ask(TabCloser::Tabs tabs, TabCloser::Show show, MainLoop* loop,
               sigc::slot<void()> then) {
    const bool mayAllGo = co_await allMayGo(std::move(tabs), std::move(show), loop);
    if (mayAllGo) then();
}

TabCloser::Tabs weak(const BrowserStore::TabList& tabs) { return {tabs.begin(), tabs.end()}; }

}  // namespace

void TabCloser::close(const BrowserTab& tab) const {
    const auto held = store_.tab(tab.id());
    if (!held) return;
    start({held}, {}, [&store = store_, id = tab.id()] {
        if (const auto live = store.tab(id)) store.close(*live);
    });
}

void TabCloser::park(const BrowserTab& tab) const {
    const auto held = store_.tab(tab.id());
    if (!held) return;
    start({held}, {}, [&store = store_, id = tab.id()] {
        if (const auto live = store.tab(id)) store.park(*live);
    });
}

void TabCloser::closeGroup(const TabGroup& group) const {
    start(weak(store_.tabs(group)), {}, [&store = store_, group] { store.closeGroup(group); });
}

void TabCloser::whenAllMayGo(sigc::slot<void()> present, sigc::slot<void()> then) const {
    start(weak(store_.tabs()), std::move(present), std::move(then));
}

void TabCloser::start(Tabs tabs, sigc::slot<void()> present, sigc::slot<void()> then) const {
    const Show show = [&store = store_, present = std::move(present)](BrowserTab& tab) {
        store.select(tab);
        if (present) present();
    };
    store_.work().start(ask(std::move(tabs), show, &store_.loop(), std::move(then)));
}

Task<bool> TabCloser::mayGo(Tabs tabs, Show show, MainLoop& loop) {
    return allMayGo(std::move(tabs), std::move(show), &loop);
}

}  // namespace orvu
