#include "platform/LoadWatch.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace orvu {

void LoadWatch::asked(const Url& url) {
    redirects_ = 0;
    waitForAnswer(url);
    clear();
}

void LoadWatch::redirected(const Url& url) {
    ++redirects_;
    waitForAnswer(url);
}

void LoadWatch::waitForAnswer(const Url& url) {
    timeout_ = loop_.after(answerTime, [this, url] {
        actions_.stop();  // which by itself is nothing to be said
        failed({LoadFailureCause::timedOut, url, std::nullopt});
    });
}

void LoadWatch::failed(LoadFailure failure) {
    timeout_.cancel();
    later_.cancel();
    if (failure.cause == LoadFailureCause::other && redirects_ >= redirectLimit) {
        failure.cause = LoadFailureCause::tooManyRedirects;
    }
    const double passed = said_ ? std::max(loop_.now().secondsSince(*said_), 0.0) : 1e9;
    const auto rest = std::chrono::duration<double>{pause}.count() - passed;
    if (rest <= 0) return say(std::move(failure));
    later_ = loop_.after(std::chrono::milliseconds{static_cast<std::int64_t>(rest * 1000) + 1},
                         [this, failure = std::move(failure)] { say(failure); });
}

void LoadWatch::dismiss() {
    personLeads();
    clear();
}

void LoadWatch::clear() {
    later_.cancel();
    set(std::nullopt);
}

void LoadWatch::say(LoadFailure failure) {
    said_ = loop_.now();
    set(std::move(failure));
}

void LoadWatch::set(std::optional<LoadFailure> failure) {
    if (failure_ == failure) return;
    failure_ = std::move(failure);
    actions_.changed();
}

}  // namespace orvu
