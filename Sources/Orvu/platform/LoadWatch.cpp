#include "platform/LoadWatch.h"

#include <utility>

namespace orvu {

void LoadWatch::asked(const Url& url) {
    redirects_ = 0;
    waitForAnswer(url);
    dismiss();
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
    if (failure.cause == LoadFailureCause::other && redirects_ >= redirectLimit) {
        failure.cause = LoadFailureCause::tooManyRedirects;
    }
    set(std::move(failure));
}

void LoadWatch::set(std::optional<LoadFailure> failure) {
    if (failure_ == failure) return;
    failure_ = std::move(failure);
    actions_.changed();
}

}  // namespace orvu
