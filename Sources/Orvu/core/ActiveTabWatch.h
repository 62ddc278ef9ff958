#pragma once

#include "core/BrowserStore.h"

#include <functional>
#include <memory>

namespace orvu {

/// Tells of each change of a window's store, and of the tab that is in front in it.
class ActiveTabWatch {
public:
    /// `store` must outlive this.
    ActiveTabWatch(BrowserStore& store, std::function<void()> changed)
        : store_(store), changed_(std::move(changed)) {
        storeChanged_ = store_.connectChanged([this] {
            watchActive();
            changed_();
        });
        watchActive();
    }
    ActiveTabWatch(const ActiveTabWatch&) = delete;
    ActiveTabWatch& operator=(const ActiveTabWatch&) = delete;

private:
    void watchActive() {
        const auto tab = store_.active();
        if (tab == watched_.lock()) return;
        watched_ = tab;
        tabChanged_ = tab ? tab->connectChanged([this] { changed_(); }) : sigc::connection{};
    }

    BrowserStore& store_;
    const std::function<void()> changed_;
    std::weak_ptr<BrowserTab> watched_;
    ScopedConnection storeChanged_;
    ScopedConnection tabChanged_;
};

}  // namespace orvu
