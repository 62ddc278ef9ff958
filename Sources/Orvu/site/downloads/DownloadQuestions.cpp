#include "site/downloads/DownloadQuestions.h"

#include "foundation/text/Translation.h"

#include <algorithm>
#include <utility>

namespace orvu {

std::optional<PageQuestion> DownloadQuestions::question() const {
    if (waiting_.empty()) return std::nullopt;
    return PageQuestion{tr("{1} wants to download more files", pageNamed(waiting_.front()->host())),
                        "arrow.down.circle"};
}

bool DownloadQuestions::settle(const auto& change) {
    const auto before = question();
    change();
    return question() != before;
}

bool DownloadQuestions::add(std::unique_ptr<DownloadRequest> request) {
    return settle([&] {
        if (goesAtOnce(*request)) {
            request->begin();
        } else if (!refused_) {
            keep(std::move(request));
        }
    });
}

bool DownloadQuestions::goesAtOnce(const DownloadRequest& request) {
    if (request.cause() == DownloadCause::person || allowed_) return true;
    if (request.cause() == DownloadCause::gesture) {
        const Date now = clock_.now();
        if (now.secondsSince(lastGesture_) > gesturePause) {
            lastGesture_ = now;
            return true;
        }
    }
    return !std::exchange(firstWent_, true);
}

void DownloadQuestions::keep(std::unique_ptr<DownloadRequest> request) {
    if (waiting_.size() >= waitingLimit) return;
    const auto connections = std::ranges::count_if(
        waiting_, [](const auto& waiting) { return waiting->holdsConnection(); });
    const bool full = connections >= static_cast<std::ptrdiff_t>(connectionsLimit);
    if (full && request->holdsConnection() && !request->setAside()) return;
    waiting_.push_back(std::move(request));
}

bool DownloadQuestions::answer(PageAnswer answer) {
    if (waiting_.empty()) return false;
    return settle([&] {
        const auto answered = std::exchange(waiting_, {});
        if (answer == PageAnswer::allow) {
            allowed_ = true;
            for (const auto& request : answered) request->begin();
        } else {
            refused_ = answer == PageAnswer::refuse || ++dismissed_ == patienceWithPages;
        }
    });
}

bool DownloadQuestions::documentUnloaded() {
    return settle([&] {
        waiting_.clear();
        allowed_ = false;
        if (!std::exchange(personLeads_, false)) return;
        firstWent_ = refused_ = false;
        dismissed_ = 0;
    });
}

}  // namespace orvu
