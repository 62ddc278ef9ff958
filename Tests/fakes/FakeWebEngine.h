#pragma once

#include "platform/WebConfiguration.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// What happened to the fake pages of one engine, in order, such as "load https://a.example/".
using FakeEngineLog = std::vector<std::string>;

/// Records by name, which are given and removed when a test resolves the promises.
class FakeWebsiteData : public WebsiteData {
public:
    [[nodiscard]] Future<std::vector<std::string>> records() override {
        readings.emplace_back();
        return readings.back().future();
    }
    [[nodiscard]] Future<bool> remove(std::vector<std::string> names) override {
        removed.push_back(std::move(names));
        removals.emplace_back();
        return removals.back().future();
    }

    std::deque<Promise<std::vector<std::string>>> readings;
    std::vector<std::vector<std::string>> removed;
    std::deque<Promise<bool>> removals;
};

/// Counts the rules that it is given.
class FakeUserContent : public UserContentController {
public:
    void add(const ContentRuleList& rules) override { added.push_back(&rules); }

    std::vector<const ContentRuleList*> added;
};

/// A page that does what a test says.
class FakeWebView : public WebView {
public:
    explicit FakeWebView(std::vector<FakeWebView*>& live, std::shared_ptr<FakeWebsiteData> data =
                                                              std::make_shared<FakeWebsiteData>())
        : live_(live), data_(std::move(data)) {
        live_.push_back(this);
    }
    ~FakeWebView() override {
        for (const auto& asked : std::exchange(closings, {})) asked.resolve(true);
        std::erase(live_, this);
        if (atEnd) atEnd();
    }

    void load(const Url& url) override { begin(url, "load " + url.absoluteString()); }
    void load(const Url& url, const Initiator& initiator) override {
        const auto& referrer = initiator.referrer;
        begin(url, "load " + url.absoluteString() + " for " +
                       (referrer ? referrer->absoluteString() : "an unknown page"));
    }
    void loadInTurn(const Url& url, std::size_t itsTurn) override {
        load(url);
        turn = itsTurn;
    }
    void begin(const Url& url, std::string call) {
        calls.push_back(std::move(call));
        turn.reset();
        previous_ = url_;
        setUrl(url);
        set(isLoading_, true, WebViewProperty::isLoading);
    }
    void stopLoading() override {
        calls.emplace_back("stopLoading");
        set(isLoading_, false, WebViewProperty::isLoading);
    }
    void reload() override { calls.emplace_back("reload"); }
    void goBack() override { calls.emplace_back("goBack"); }
    void goForward() override { calls.emplace_back("goForward"); }

    [[nodiscard]] std::string title() const override { return title_; }
    [[nodiscard]] std::optional<Url> url() const override { return url_; }
    [[nodiscard]] bool canGoBack() const override { return canGoBack_; }
    [[nodiscard]] bool canGoForward() const override { return canGoForward_; }
    [[nodiscard]] double estimatedProgress() const override { return progress_; }
    [[nodiscard]] bool isLoading() const override { return isLoading_; }
    [[nodiscard]] bool hasOnlySecureContent() const override { return secure_; }
    [[nodiscard]] const std::optional<LoadFailure>& failure() const override { return failure_; }
    void dismissFailure() override { setFailure(std::nullopt); }
    void loadWithRefusedCertificate() override { calls.emplace_back("loadWithRefusedCertificate"); }
    void showInspector() override { calls.emplace_back("showInspector"); }
    [[nodiscard]] ActiveCapture activeCapture() const override { return capture_; }
    [[nodiscard]] double pageZoom() const override { return zoom_; }
    void setPageZoom(double zoom) override { zoom_ = zoom; }
    [[nodiscard]] Future<ScriptResult> evaluateJavaScript(std::string script) override {
        scripts.push_back(std::move(script));
        answers.emplace_back();
        return answers.back().future();
    }
    [[nodiscard]] Future<bool> find(std::string text, FindConfiguration configuration) override {
        searches.push_back({std::move(text), configuration});
        findAnswers.emplace_back();
        return findAnswers.back().future();
    }
    void stopCapture(CaptureKind kind) override {
        const bool camera = kind == CaptureKind::camera;
        calls.emplace_back(camera ? "stop camera" : "stop microphone");
        ActiveCapture left = capture_;
        (camera ? left.camera : left.microphone) = false;
        setCapture(left);
    }
    [[nodiscard]] std::shared_ptr<WebsiteData> websiteData() override { return data_; }
    [[nodiscard]] PageDialogs& dialogs() override { return dialogs_; }
    [[nodiscard]] Future<bool> mayClose() override {
        const Promise<bool> promise;
        if (!asksBeforeClosing) promise.resolve(true);
        closings.push_back(promise);
        return promise.future();
    }
    void print() override { calls.emplace_back("print"); }
    void savePage() override { calls.emplace_back("savePage"); }
    [[nodiscard]] Future<std::optional<std::string>> source() override {
        sources.emplace_back();
        return sources.back().future();
    }
    void showSource(const Url& page, std::string text) override {
        calls.push_back("showSource " + page.absoluteString() + " " + text);
    }
    [[nodiscard]] const std::optional<Url>& hoveredLink() const override { return hoveredLink_; }
    sigc::connection connectMenuChosen(
        const sigc::slot<void(const PageMenuChoice&)>& slot) override {
        return menuChosen.connect(slot);
    }
    void setNavigationDelegate(NavigationDelegate* delegate) override { delegate_ = delegate; }
    sigc::connection connectPropertyChanged(
        const sigc::slot<void(WebViewProperty)>& slot) override {
        return changed_.connect(slot);
    }

    // What a test makes happen.
    void setTitle(std::string title) { set(title_, std::move(title), WebViewProperty::title); }
    void setUrl(std::optional<Url> url) { set(url_, std::move(url), WebViewProperty::url); }
    void setCanGoBack(bool can) { set(canGoBack_, can, WebViewProperty::canGoBack); }
    void setCanGoForward(bool can) { set(canGoForward_, can, WebViewProperty::canGoForward); }
    void setProgress(double value) { set(progress_, value, WebViewProperty::estimatedProgress); }
    void setSecure(bool secure) { set(secure_, secure, WebViewProperty::hasOnlySecureContent); }
    void setFailure(std::optional<LoadFailure> failure) {
        set(failure_, std::move(failure), WebViewProperty::failure);
    }
    void setCapture(ActiveCapture capture) {
        set(capture_, capture, WebViewProperty::activeCapture);
    }
    void setHoveredLink(std::optional<Url> link) {
        set(hoveredLink_, std::move(link), WebViewProperty::hoveredLink);
    }
    /// The load that was asked for ends well.
    void finish(const std::string& title) {
        set(isLoading_, false, WebViewProperty::isLoading);
        setTitle(title);
        delegate_->didFinish();
    }
    /// The load that was asked for fails: the previous page stays or, where there was none, the
    /// address that was asked for.
    void fail() {
        set(isLoading_, false, WebViewProperty::isLoading);
        if (previous_) setUrl(previous_);
    }
    /// The load that was asked for becomes a download, and is none of a page any more.
    void becomeDownload() {
        set(isLoading_, false, WebViewProperty::isLoading);
        setUrl(previous_);
    }
    /// The page asks whether it is to be left, when it was asked whether it may be closed. What the
    /// person says is what the program hears.
    void askBeforeClosing() {
        const auto asked = closings.back();
        dialogs_.ask({.kind = PageDialog::Kind::beforeUnload, .startedByPerson = true}, Date{},
                     [asked](const PageDialogAnswer& answer) { asked.resolve(answer.isAccepted); });
    }
    /// Answers what the page asks.
    void answerDialog(const PageDialogAnswer& answer) {
        dialogs_.answer(dialogs_.current()->id, answer);
    }
    [[nodiscard]] NavigationDelegate* delegate() const { return delegate_; }

    FakeEngineLog calls;
    std::optional<std::size_t> turn;  ///< in which the last load was to come
    std::function<void()> atEnd;      ///< runs when the view goes
    std::vector<std::string> scripts;
    std::deque<Promise<ScriptResult>> answers;  ///< one for each script, to be resolved
    struct Search {
        std::string text;
        FindConfiguration configuration;
        friend bool operator==(const Search&, const Search&) = default;
    };
    std::vector<Search> searches;
    std::deque<Promise<bool>> findAnswers;  ///< one for each search, to be resolved
    std::deque<Promise<std::optional<std::string>>> sources;  ///< one for each time asked
    sigc::signal<void(const PageMenuChoice&)> menuChosen;
    bool asksBeforeClosing = false;      ///< otherwise it may be closed at once
    std::deque<Promise<bool>> closings;  ///< one for each time that it was asked

private:
    template <class T>
    void set(T& member, T value, WebViewProperty property) {
        if (member == value) return;
        member = std::move(value);
        changed_.emit(property);
    }

    std::vector<FakeWebView*>& live_;
    const std::shared_ptr<FakeWebsiteData> data_;
    NavigationDelegate* delegate_ = nullptr;
    PageDialogs dialogs_;
    sigc::signal<void(WebViewProperty)> changed_;
    std::string title_;
    std::optional<Url> url_;
    std::optional<Url> previous_;
    bool canGoBack_ = false;
    bool canGoForward_ = false;
    double progress_ = 0;
    std::optional<LoadFailure> failure_;
    bool isLoading_ = false;
    bool secure_ = false;
    ActiveCapture capture_;
    std::optional<Url> hoveredLink_;
    double zoom_ = 1;
};

/// An engine without pages of its own.
class FakeWebEngine : public WebEngine {
public:
    class Configuration : public WebConfiguration {
    public:
        Configuration(FakeWebEngine& engine, std::shared_ptr<FakeWebsiteData> data)
            : engine_(engine), data_(std::move(data)) {
            engine_.contents.push_back(content_);
        }
        void setElementFullscreenEnabled(bool enabled) override { engine_.fullscreen = enabled; }
        void setApplicationNameForUserAgent(std::string name) override {
            engine_.applicationName = std::move(name);
        }
        [[nodiscard]] std::shared_ptr<UserContentController> userContentController() override {
            return content_;
        }
        [[nodiscard]] std::unique_ptr<WebView> makeWebView() override {
            return std::make_unique<FakeWebView>(engine_.views, data_);
        }

    private:
        FakeWebEngine& engine_;
        const std::shared_ptr<FakeWebsiteData> data_;
        const std::shared_ptr<FakeUserContent> content_ = std::make_shared<FakeUserContent>();
    };

    [[nodiscard]] std::unique_ptr<WebConfiguration> makeConfiguration(
        const WebsiteDataStore& store) override {
        stores.push_back(store);
        data.push_back(std::make_shared<FakeWebsiteData>());
        return std::make_unique<Configuration>(*this, data.back());
    }
    void removeDataStore(const Uuid& identifier) override { removedStores.push_back(identifier); }
    [[nodiscard]] Future<bool> clearDataStore(const WebsiteDataStore& store) override {
        clearedStores.push_back(store);
        clearings.emplace_back();
        return clearings.back().future();
    }

    std::vector<FakeWebView*> views;       ///< all live views, the oldest first
    std::vector<WebsiteDataStore> stores;  ///< the store of each configuration made
    /// What websites stored, for each configuration made.
    std::vector<std::shared_ptr<FakeWebsiteData>> data;
    std::vector<Uuid> removedStores;
    std::vector<WebsiteDataStore> clearedStores;
    std::vector<Promise<bool>> clearings;  ///< one for each cleared store, to be resolved
    /// Where the rules of each configuration go; they outlive it here.
    std::vector<std::shared_ptr<FakeUserContent>> contents;
    bool fullscreen = false;
    std::string applicationName;
};

}  // namespace orvu
