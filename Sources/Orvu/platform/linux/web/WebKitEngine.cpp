#include "platform/linux/web/WebKitEngine.h"

#include "platform/SpellingLanguages.h"
#include "platform/linux/web/MotionNotice.h"
#include "platform/linux/web/OrvuDownload.h"
#include "platform/linux/web/OrvuWebView.h"

namespace orvu {
namespace {

class Configuration : public WebConfiguration {
public:
    Configuration(std::shared_ptr<WebKitSession> session, MainLoop& loop, NetworkMonitor& network,
                  std::shared_ptr<LoadQueue> queue, std::shared_ptr<const DownloadTaker> taker)
        : shared_(std::make_shared<WebKitShared>(std::move(session), network, std::move(queue),
                                                 std::move(taker))),
          loop_(loop),
          motion_(shared_->content.get(), loop) {}

    void setElementFullscreenEnabled(bool enabled) override {
        shared_->elementFullscreen = enabled;
    }
    void setApplicationNameForUserAgent(std::string name) override {
        const auto plain = GObjectPointer<WebKitSettings>::adopt(webkit_settings_new());
        shared_->userAgent = userAgent(webkit_settings_get_user_agent(plain.get()), name);
    }
    [[nodiscard]] std::shared_ptr<UserContentController> userContentController() override {
        return {shared_, &shared_->content};
    }
    [[nodiscard]] std::unique_ptr<WebView> makeWebView() override {
        return std::make_unique<OrvuWebView>(shared_, loop_);
    }

private:
    std::shared_ptr<WebKitShared> shared_;
    MainLoop& loop_;
    MotionNotice motion_;
};

/// Pages that show the source of another one. There is one handler for the whole process.
void serveSources() {
    static const bool once = [] {
        registerPageSources([](WebKitWebView* engineView) {
            const OrvuWebView* const view = OrvuWebView::of(engineView);
            return view ? &view->shownSource() : nullptr;
        });
        return true;
    }();
    (void)once;
}

/// A page's downloads are the page's to ask for; others begin at once.
void downloadBegan(WebKitDownload* download, const std::shared_ptr<const DownloadTaker>& taker) {
    auto begun = std::make_unique<OrvuDownload>(download);
    WebKitWebView* const page = webkit_download_get_web_view(download);
    OrvuWebView* const view = page ? OrvuWebView::of(page) : nullptr;
    if (view) {
        view->downloadBegan(std::move(begun), download, taker);
    } else if (const auto& take = *taker) {
        take(std::move(begun));
    }
}

/// Has what a person writes checked in the languages of the locale. The engine leaves out those
/// that have no dictionary here; for an empty list it would take any that it finds.
void checkSpelling(WebKitWebContext* context) {
    std::vector<std::string> locales;
    for (const char* const* name = g_get_language_names(); *name; ++name)
        locales.emplace_back(*name);
    const auto languages = spellingLanguages(locales);
    std::vector<const char*> list;
    list.reserve(languages.size() + 1);
    for (const std::string& language : languages) list.push_back(language.c_str());
    list.push_back(nullptr);
    webkit_web_context_set_spell_checking_enabled(context, languages.empty() ? FALSE : TRUE);
    if (!languages.empty()) webkit_web_context_set_spell_checking_languages(context, list.data());
}

}  // namespace

WebKitEngine::WebKitEngine(const SystemPaths& paths, MainLoop& loop, Activity& activity,
                           NetworkMonitor& network)
    : taker_(std::make_shared<DownloadTaker>([this](std::unique_ptr<Download> download) {
          if (onDownload) onDownload(std::move(download));
      })),
      begun_(std::make_shared<DownloadsBegun>(
          [taker = taker_](WebKitDownload* download) { downloadBegan(download, taker); })),
      sessions_(paths, begun_),
      loop_(loop),
      network_(network),
      queue_(std::make_shared<LoadQueue>(loop, activity)) {
    serveSources();
    checkSpelling(webkit_web_context_get_default());
}

WebKitEngine::~WebKitEngine() { *taker_ = nullptr; }

std::unique_ptr<WebConfiguration> WebKitEngine::makeConfiguration(const WebsiteDataStore& store) {
    return std::make_unique<Configuration>(sessions_.session(store), loop_, network_, queue_,
                                           taker_);
}

std::string userAgent(std::string_view engineOwn, std::string_view applicationName) {
    constexpr std::string_view layoutEngine = "(KHTML, like Gecko)";
    const auto at = engineOwn.find(layoutEngine);
    const auto head = engineOwn.substr(
        0, at == std::string_view::npos ? engineOwn.size() : at + layoutEngine.size());
    return std::string{head} + " " + std::string{applicationName};
}

}  // namespace orvu
