#pragma once

#include "shell/BrowserWindow.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

class FakeBrowserWindow;

/// The screen of a test: the live windows, the oldest first.
struct FakeScreen {
    std::vector<FakeBrowserWindow*> windows;
    /// Makes windows that stand on this screen.
    [[nodiscard]] BrowserWindowFactory factory();
};

/// A window that does what a test says and keeps a list of what it was asked.
class FakeBrowserWindow : public BrowserWindow {
public:
    FakeBrowserWindow(FakeScreen& screen, const BrowserWindowTraits& windowTraits,
                      std::function<void()> closed)
        : traits(windowTraits), screen_(screen), closed_(std::move(closed)) {
        screen_.windows.push_back(this);
    }
    ~FakeBrowserWindow() override { std::erase(screen_.windows, this); }

    void setContent(const std::shared_ptr<BrowserStore>& store) override {
        calls.emplace_back("setContent");
        if (whenContentIsSet) whenContentIsSet();
        content = store;
    }
    [[nodiscard]] bool isVisible() const override { return visible; }
    [[nodiscard]] bool isKey() const override { return key; }
    [[nodiscard]] std::optional<Point> topLeft() const override { return corner; }
    void placeAt(Point topLeft) override {
        calls.push_back("placeAt " + std::to_string(topLeft.x) + " " + std::to_string(topLeft.y));
        corner = topLeft;
    }
    void rememberFrame() override { calls.emplace_back("rememberFrame"); }
    void present() override {
        calls.emplace_back("present");
        visible = true;
    }

    void performClose() override { calls.emplace_back("performClose"); }
    void performMiniaturize() override { calls.emplace_back("performMiniaturize"); }
    void performZoom() override { calls.emplace_back("performZoom"); }
    void toggleFullScreen() override { calls.emplace_back("toggleFullScreen"); }
    void openPrivately(const Url& url) override {
        calls.push_back("openPrivately " + url.absoluteString());
    }
    void edit(EditingCommand command) override {
        calls.push_back("edit " + std::to_string(static_cast<int>(command)));
    }

    /// A person closes the window. It is gone afterwards if its owner let go of it.
    void close() {
        const auto closed = closed_;  // the window may go in there
        closed();
    }

    const BrowserWindowTraits traits;
    std::vector<std::string> calls;
    std::shared_ptr<BrowserStore> content;
    std::function<void()> whenContentIsSet;  ///< runs before the content is exchanged
    bool visible = false;
    bool key = false;
    std::optional<Point> corner;

private:
    FakeScreen& screen_;
    std::function<void()> closed_;
};

inline BrowserWindowFactory FakeScreen::factory() {
    return [this](const BrowserWindowTraits& traits, std::function<void()> closed) {
        return std::make_unique<FakeBrowserWindow>(*this, traits, std::move(closed));
    };
}

}  // namespace orvu
