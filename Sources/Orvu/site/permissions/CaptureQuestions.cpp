#include "site/permissions/CaptureQuestions.h"

#include "foundation/text/Translation.h"

#include <algorithm>
#include <iterator>
#include <ranges>

namespace orvu {
namespace {

using Answer = MediaCaptureRequest::Answer;

/// Answers all of them. They are in nobody's hands any more: an answer may bring a new request.
void answerAll(std::vector<MediaCaptureRequest> requests, Answer answer) {
    for (auto& request : requests) request.answer(answer);
}

}  // namespace

std::string CaptureQuestion::text() const {
    const std::string page = pageNamed(host);
    switch (type) {
        case MediaCaptureType::camera:
            return tr("{1} wants to use your camera", page);
        case MediaCaptureType::microphone:
            return tr("{1} wants to use your microphone", page);
        case MediaCaptureType::cameraAndMicrophone:
            break;
    }
    return tr("{1} wants to use your camera and microphone", page);
}

std::string_view CaptureQuestion::symbol() const {
    return type == MediaCaptureType::microphone ? "mic" : "video";
}

std::optional<CaptureQuestion> CaptureQuestions::question() const {
    if (waiting_.empty()) return std::nullopt;
    return CaptureQuestion{waiting_.front().type(), waiting_.front().host()};
}

std::vector<CaptureKind> CaptureQuestions::blockedKinds() const {
    std::vector<CaptureKind> blocked;
    if (!host_) return blocked;
    std::ranges::copy_if(SitePermissions::allKinds, std::back_inserter(blocked),
                         [&](CaptureKind kind) {
                             return permissions_.choice(kind, *host_, persistence_) ==
                                    SitePermissions::Choice::block;
                         });
    return blocked;
}

bool CaptureQuestions::settle(const auto& change) {
    const auto before = question();
    change();
    return question() != before;
}

PermissionDecision CaptureQuestions::decision(const MediaCaptureRequest& request) const {
    const auto concerns = [&](const Kinds& some) {
        return std::ranges::any_of(captureKinds(request.type()),
                                   [&](CaptureKind kind) { return some.contains(kind); });
    };
    const auto decided = permissions_.decision(request.type(), request.host(), persistence_);
    if (decided == PermissionDecision::deny) return decided;
    if (decided == PermissionDecision::grant && !concerns(stopped_)) return decided;
    return concerns(refused_) ? PermissionDecision::deny : PermissionDecision::prompt;
}

CaptureQuestions::Requests CaptureQuestions::take(const auto& condition) {
    const auto taken = std::ranges::stable_partition(
        waiting_, [&](const MediaCaptureRequest& request) { return !condition(request); });
    Requests result{std::move_iterator{taken.begin()}, std::move_iterator{taken.end()}};
    waiting_.erase(taken.begin(), taken.end());
    return result;
}

bool CaptureQuestions::add(MediaCaptureRequest request) {
    return settle([&] {
        host_ = request.host();
        const auto decided = decision(request);
        if (decided == PermissionDecision::prompt) {
            waiting_.push_back(std::move(request));
        } else {
            request.answer(decided == PermissionDecision::grant ? Answer::grant : Answer::deny);
        }
    });
}

bool CaptureQuestions::answer(PageAnswer answer) {
    if (waiting_.empty()) return false;
    return settle([&] {
        const CaptureQuestion asked = *question();
        const auto kinds = captureKinds(asked.type);
        if (answer == PageAnswer::allow) {
            for (const auto kind : kinds) stopped_.erase(kind);
            const auto covered = [&](const MediaCaptureRequest& request) {
                return request.host() == asked.host &&
                       std::ranges::includes(kinds, captureKinds(request.type()));
            };
            return answerAll(take(covered), Answer::grant);
        }
        if (answer == PageAnswer::refuse || ++dismissed_ == patienceWithPages) {
            refused_.insert(kinds.begin(), kinds.end());
        }
        const auto denied = [&](const MediaCaptureRequest& request) {
            return request.type() == asked.type || decision(request) == PermissionDecision::deny;
        };
        answerAll(take(denied), Answer::deny);
    });
}

void CaptureQuestions::captureStopped(ActiveCapture stopped) {
    std::ranges::copy_if(SitePermissions::allKinds, std::inserter(stopped_, stopped_.end()),
                         [&](CaptureKind kind) { return stopped.has(kind); });
}

bool CaptureQuestions::permissionsChanged() {
    return settle([&] {
        refused_.clear();  // who goes and chooses wants to be asked again
        stopped_.clear();
        dismissed_ = 0;
        const auto decidedAs = [this](PermissionDecision decided) {
            return [this, decided](const MediaCaptureRequest& request) {
                return decision(request) == decided;
            };
        };
        auto granted = take(decidedAs(PermissionDecision::grant));
        auto denied = take(decidedAs(PermissionDecision::deny));
        answerAll(std::move(granted), Answer::grant);
        answerAll(std::move(denied), Answer::deny);
    });
}

bool CaptureQuestions::documentUnloaded() {
    return settle([&] {
        refused_.clear();
        stopped_.clear();
        dismissed_ = 0;
        host_.reset();
        answerAll(std::exchange(waiting_, {}), Answer::deny);
    });
}

}  // namespace orvu
