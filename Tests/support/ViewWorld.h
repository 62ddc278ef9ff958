#pragma once

#include "fakes/FakeBrowserWindow.h"
#include "shell/BrowserView.h"
#include "support/StoreWorld.h"
#include "support/UpdateWorld.h"

#include <memory>
#include <utility>

namespace orvu {

/// A fixture with the views of windows that are not there, and a list of what was asked of them.
class ViewTest : public StoreTest {
protected:
    ViewTest() {
        world.storeRecords<Profile>("orvuProfiles", {Profile::personal(), world.work});
        services = std::make_unique<AppServices>(world.platform());
    }

    /// A view that writes down in `asked` what is asked of the window's parts.
    [[nodiscard]] std::unique_ptr<BrowserView> viewOf(std::shared_ptr<BrowserStore> store) {
        auto view = std::make_unique<BrowserView>(
            std::move(store), shared(), window,
            [this](const Profile& profile) { asked.push_back("switch " + profile.name); },
            BrowserView::Narrow::no);
        view->connectAddressFocusRequested(
            [this, shown = view.get()] { asked.push_back("edit " + shown->query.get()); });
        view->connectFindFocusRequested([this] { asked.emplace_back("find"); });
        view->connectFindAgainRequested([this](FindDirection direction) {
            asked.emplace_back(direction == FindDirection::next ? "find next" : "find previous");
        });
        view->connectRewindRequested([this] { asked.emplace_back("rewind"); });
        view->connectPageFocusRequested([this] { asked.emplace_back("page"); });
        view->connectAreaMoveRequested(
            [this](int areas) { asked.push_back("areas " + std::to_string(areas)); });
        return view;
    }

    [[nodiscard]] BrowserView::Shared shared() { return {*services, assistant, updates.updater}; }

    Assistant assistant{world.model, world.defaults};
    UpdateWorld updates;
    FakeScreen screen;
    FakeBrowserWindow window{screen, {}, [] {}};
    FakePasteboard& pasteboard = world.pasteboard;
    FakeWorkspace& workspace = world.workspace;
    std::unique_ptr<AppServices> services;  ///< of a program with two profiles
    Strings asked;
};

}  // namespace orvu
