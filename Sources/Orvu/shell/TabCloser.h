#pragma once

#include "core/BrowserStore.h"
#include "foundation/async/Task.h"

#include <sigc++/sigc++.h>

#include <memory>
#include <vector>

namespace orvu {

/// Closes what a person wants closed in a window, once the pages agree: one in which something was
/// typed may ask whether it is to be left. Where no page asks, the tab has gone when the call returns;
/// what waits ends with the store.
class TabCloser {
public:
    using Tabs = std::vector<std::weak_ptr<BrowserTab>>;
    /// Is given a tab whose page asks, to bring it to the front.
    using Show = sigc::slot<void(BrowserTab&)>;

    explicit TabCloser(BrowserStore& store) : store_(store) {}

    /// As the operations of the store.
    void close(const BrowserTab& tab) const;
    void park(const BrowserTab& tab) const;
    void closeGroup(const TabGroup& group) const;

    /// Calls `then` once all pages of the window may go; never if the person keeps one. `present`
    /// is to bring the window to the front, where a page asks.
    void whenAllMayGo(sigc::slot<void()> present, sigc::slot<void()> then) const;

    /// Whether pages may go. All are asked at once, but the person is asked by one after the other,
    /// until one is to stay. What waited ends on a turn of the loop of its own.
    [[nodiscard]] static Task<bool> mayGo(Tabs tabs, Show show, MainLoop& loop);

private:
    void start(Tabs tabs, sigc::slot<void()> present, sigc::slot<void()> then) const;

    BrowserStore& store_;
};

}  // namespace orvu
