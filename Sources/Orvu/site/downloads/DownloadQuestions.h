#pragma once

#include "foundation/Date.h"
#include "platform/DownloadRequest.h"
#include "platform/MainLoop.h"
#include "site/PageQuestion.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// The downloads that one page begins. What the person began goes at once, and so does the first
/// that the page begins by itself; the others wait here for one answer, which holds for all of them
/// until another document stands.
///
/// A page that leads to itself again and again gains nothing by it: only after the person led
/// somewhere does the next document begin with a clean slate.
class DownloadQuestions {
public:
    /// So many wait at most; what comes then is dropped.
    static constexpr std::size_t waitingLimit = 100;
    /// So many of them keep a connection: the engine has six to each server, and pages need them.
    static constexpr std::size_t connectionsLimit = 2;
    /// One gesture is good for one download: those that scripts begin within it follow each other
    /// faster than a person does.
    static constexpr double gesturePause = 1.0;  // seconds

    /// `clock` must outlive this.
    explicit DownloadQuestions(const MainLoop& clock) : clock_(clock) {}

    /// What is to be asked now.
    [[nodiscard]] std::optional<PageQuestion> question() const;

    // Each of these tells whether another question, or none, is to be asked afterwards. What begins
    // may end the page, but whoever calls must outlive the call.
    bool add(std::unique_ptr<DownloadRequest> request);
    bool answer(PageAnswer answer);
    /// What waits is dropped.
    bool documentUnloaded();
    /// The person leads to another document, which is about to come.
    void personLeads() { personLeads_ = true; }

private:
    bool settle(const auto& change);
    [[nodiscard]] bool goesAtOnce(const DownloadRequest& request);
    void keep(std::unique_ptr<DownloadRequest> request);

    const MainLoop& clock_;
    std::vector<std::unique_ptr<DownloadRequest>> waiting_;
    Date lastGesture_ = Date::distantPast();
    bool firstWent_ = false;
    bool allowed_ = false;
    bool refused_ = false;
    int dismissed_ = 0;
    bool personLeads_ = false;
};

}  // namespace orvu
