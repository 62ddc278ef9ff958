#include "update/Updater.h"

#include "foundation/text/Text.h"
#include "update/SignedText.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

constexpr UpdateTransport::Limits manifestLimits{.bytes = UpdateRelease::longest};
constexpr UpdateTransport::Limits archiveLimits{.timeout = std::chrono::seconds{60},
                                                .bytes = SignedText::largestArchive};
constexpr UpdateTransport::Limits signedTextLimits{.bytes = SignedText::longest + 256};

std::string notDownloaded(const std::string& description) {
    return std::string{update_words::notDownloaded} + description;
}

}  // namespace

Updater::Updater(Seam seam, UpdateServer server, ApplicationFacts running)
    : seam_(seam), server_(std::move(server)), running_(std::move(running)) {
    seam_.settings.autoUpdate.connectChanged(sigc::mem_fun(*this, &Updater::automaticChanged));
}

bool Updater::updatesItself() const {
    return !server_.host().empty() && seam_.installer.support() == UpdateSupport::own;
}

std::optional<Url> Updater::whatsNew() const {
    return server_.host().empty() ? std::nullopt : std::optional{server_.whatsNew()};
}

std::optional<bool> Updater::automatic() const {
    const auto& setting = seam_.settings.autoUpdate;
    return setting.isSet() ? std::optional{setting.get()} : std::nullopt;
}

void Updater::start() {
    if (!updatesItself()) return;
    first_ = seam_.loop.after(firstCheck, [this] { check(UserInitiated::no); });
    scheduleNext();
}

void Updater::scheduleNext() {
    timer_ = seam_.loop.after(interval, [this] {
        scheduleNext();
        check(UserInitiated::no);
    });
}

void Updater::automaticChanged() {
    if (automatic() == true && state.get().kind == Kind::available) download();
}

bool Updater::isInHand() const {
    return state.get().kind == Kind::downloading || state.get().kind == Kind::ready;
}

void Updater::check(UserInitiated userInitiated) {
    if (isInHand()) return;
    if (updatesItself()) {
        state.set({Kind::checking});
        tasks_.start(runCheck(userInitiated));
    } else if (userInitiated == UserInitiated::yes) {
        state.set({Kind::failed, std::string{update_words::bySystem}});
    }
}

Task<void> Updater::runCheck(UserInitiated userInitiated) {
    const auto reply = co_await seam_.transport.text(server_.feed(), manifestLimits);
    if (isInHand()) co_return;  // another check was faster
    take(reply.failure.empty() ? UpdateRelease::parse(reply.body) : std::nullopt, userInitiated);
}

void Updater::take(const std::optional<Release>& release, UserInitiated userInitiated) {
    const bool isAsked = userInitiated == UserInitiated::yes;
    if (!release) {
        state.set(isAsked ? State{Kind::failed, server_.unreachable()} : State{});
        return;
    }
    lastChecked.set(seam_.loop.now());
    if (!counts(*release)) {
        state.set({Kind::upToDate});
        return;
    }
    release_ = release;
    state.set({Kind::available, release->version});
    if (isAsked || automatic() == true) download();
}

bool Updater::counts(const Release& release) const {
    return release.build > std::max(currentBuild(), seam_.installer.takenBack()) &&
           server_.serves(release.url);
}

void Updater::download() {
    if (!release_ || isInHand()) return;
    state.set({Kind::downloading, release_->version});
    tasks_.start(runDownload(*release_));
}

Task<void> Updater::runDownload(Release release) {
    const std::string failure = co_await fetch(release);
    if (!failure.empty()) seam_.installer.discard();
    state.set(failure.empty() ? State{Kind::ready, release.version} : State{Kind::failed, failure});
}

Task<std::string> Updater::fetch(Release release) {
    received.set(0);
    const auto place = co_await seam_.installer.prepare();
    if (!place) co_return std::string{update_words::notUnpacked};
    std::string failure = co_await fetchInto(release, *place);
    if (failure.empty()) failure = co_await verifyAndStage(release);
    co_return failure;
}

Task<std::string> Updater::fetchInto(Release release, std::filesystem::path place) {
    UpdateTransport::Progress progress = [this](std::uint64_t bytes) { received.set(bytes); };
    const auto reply = co_await seam_.transport.file(release.url, std::move(place), archiveLimits,
                                                     std::move(progress));
    if (!reply.failure.empty()) co_return notDownloaded(reply.failure);
    const std::string digest = co_await seam_.installer.digest();
    const bool matches = !digest.empty() && digest == lowercased(release.sha256);
    co_return matches ? std::string{} : server_.mismatch();
}

Task<std::string> Updater::verifyAndStage(Release release) {
    const auto address = UpdateServer::signedText(release.url);
    if (!address) co_return std::string{update_words::notSigned};
    auto reply = co_await seam_.transport.text(*address, signedTextLimits);
    if (!reply.failure.empty()) co_return notDownloaded(reply.failure);
    // Not within the awaited call: the compiler would destroy such a temporary twice.
    ExpectedUpdate expected{.version = release.version,
                            .build = release.build,
                            .newerThan = std::max(currentBuild(), seam_.installer.takenBack()),
                            .signedText = std::move(reply.body)};
    const auto staged = co_await seam_.installer.stage(std::move(expected));
    if (staged.failure.empty()) staged_ = staged.path;
    co_return staged.failure;
}

void Updater::installAndRestart() {
    if (!staged_ || state.get().kind != Kind::ready) return;
    staged_.reset();
    seam_.settings.showWhatsNewFor.set(state.get().text);
    if (const auto failure = seam_.installer.launchSwap(AfterSwap::startAgain)) {
        state.set({Kind::failed, std::string{update_words::notRestarted} + *failure});
        return;
    }
    quit_.emit();  // last: an observer may end this
}

void Updater::installOnQuitIfReady() {
    if (automatic() != true || !staged_ || state.get().kind != Kind::ready) return;
    seam_.settings.showWhatsNewFor.set(state.get().text);
    static_cast<void>(seam_.installer.launchSwap(AfterSwap::nothing));  // it is leaving anyway
}

bool Updater::takeWhatsNewToShow() {
    auto& due = seam_.settings.showWhatsNewFor;
    if (!due.isSet() || due.get() != currentVersion()) return false;
    seam_.defaults.remove(SettingsKeys::showWhatsNewFor.name);
    return true;
}

}  // namespace orvu
