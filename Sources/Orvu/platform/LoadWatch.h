#pragma once

#include "platform/LoadFailure.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <functional>
#include <optional>

namespace orvu {

/// Follows a view's loads: what the last one failed of, and that none waits for ever.
class LoadWatch {
public:
    /// A load that had no answer for so long is given up.
    static constexpr std::chrono::seconds answerTime{60};
    /// So many redirects are followed. The engine, which counts the same, gives no reason of its own
    /// where it stops.
    static constexpr int redirectLimit = 20;
    /// A page can fail as often as it likes. What is to be said follows at most so often, the last
    /// of it in the end; what the person asks for is said at once.
    static constexpr std::chrono::seconds pause{1};

    struct Actions {
        std::function<void()> stop;     ///< ends the present load
        std::function<void()> changed;  ///< `failure` has changed; may end the watch
    };

    /// `loop` must outlive the watch.
    LoadWatch(MainLoop& loop, Actions actions) : loop_(loop), actions_(std::move(actions)) {}

    /// Why the last load brought no page; nothing while another one is on its way, and after one
    /// that was stopped or came to something else.
    [[nodiscard]] const std::optional<LoadFailure>& failure() const { return failure_; }

    /// A load of `url` begins.
    void asked(const Url& url);
    /// The present load goes on to another address.
    void redirected(const Url& url);
    /// The server has answered, or the load has ended.
    void answered() { timeout_.cancel(); }
    /// What happened is to be said.
    void failed(LoadFailure failure);
    /// The person asks for what comes next.
    void personLeads() { said_.reset(); }
    /// The same, and nothing is to be said any more.
    void dismiss();

private:
    void clear();
    void say(LoadFailure failure);
    void waitForAnswer(const Url& url);
    void set(std::optional<LoadFailure> failure);

    MainLoop& loop_;
    const Actions actions_;
    std::optional<LoadFailure> failure_;
    int redirects_ = 0;  ///< of the present load
    Scheduled timeout_;
    std::optional<Date> said_;  ///< when the last failure was
    Scheduled later_;           ///< says the next one
};

}  // namespace orvu
