#include "site/icons/FetchTurns.h"

#include <cstdint>
#include <list>
#include <unordered_map>
#include <utility>

namespace orvu {

struct FetchTurns::State : std::enable_shared_from_this<State> {
    struct Waiting {
        std::uint64_t order;
        Promise<Turn> promise;
    };
    struct Host {
        std::size_t running = 0;
        std::list<Waiting> waiting;  // in the order of asking
    };
    using Hosts = std::unordered_map<std::string, Host>;

    explicit State(Limits given) : limits(given) {}

    /// The host whose turn it is; the end if nobody may.
    [[nodiscard]] Hosts::iterator first() {
        auto best = hosts.end();
        if (runningInAll >= limits.inAll) return best;
        const auto rank = [](const Host& host) {
            return std::pair{host.running, host.waiting.front().order};
        };
        for (auto each = hosts.begin(); each != hosts.end(); ++each) {
            const Host& host = each->second;
            if (host.waiting.empty() || host.running >= limits.perHost) continue;
            if (best == hosts.end() || rank(host) < rank(best->second)) best = each;
        }
        return best;
    }

    /// Gives turns until nobody may have one. Who gets one goes on within this call, and may end
    /// or want others.
    void serve() {
        if (isServing) return;
        isServing = true;
        const auto keepAlive = shared_from_this();
        for (auto next = first(); next != hosts.end(); next = first()) {
            const std::string name = next->first;
            Host& host = next->second;
            const auto promise = host.waiting.front().promise;
            host.waiting.pop_front();
            ++host.running;
            ++runningInAll;
            promise.resolve(Turn{weak_from_this(), name});
        }
        isServing = false;
    }

    void release(const std::string& name) {
        --runningInAll;
        --hosts.at(name).running;
        forgetIfIdle(name);
        serve();
    }

    void giveUp(const std::string& name, std::list<Waiting>::iterator waiting) {
        hosts.at(name).waiting.erase(waiting);
        forgetIfIdle(name);
    }

    void forgetIfIdle(const std::string& name) {
        const auto found = hosts.find(name);
        if (found->second.running == 0 && found->second.waiting.empty()) hosts.erase(found);
    }

    Limits limits;
    Hosts hosts;  // that somebody fetches from or waits for
    std::size_t runningInAll = 0;
    std::uint64_t lastOrder = 0;
    bool isServing = false;
};

FetchTurns::Turn::~Turn() {
    if (const auto turns = turns_.lock()) turns->release(host_);
}

FetchTurns::FetchTurns(Limits limits) : state_(std::make_shared<State>(limits)) {}

Future<FetchTurns::Turn> FetchTurns::next(const std::string& host) {
    auto& waiting = state_->hosts[host].waiting;
    const auto mine = waiting.insert(waiting.end(), {++state_->lastOrder, {}});
    auto future = mine->promise.future();
    // Called at most once, while the entry is there: a turn takes this back.
    mine->promise.onAbandoned([weakState = std::weak_ptr{state_}, host, mine] {
        if (const auto state = weakState.lock()) state->giveUp(host, mine);
    });
    state_->serve();
    return future;
}

void FetchTurns::close() {
    state_->limits.inAll = 0;
    for (auto& host : state_->hosts) {
        for (const auto& each : host.second.waiting) each.promise.onAbandoned({});
        host.second.waiting.clear();
    }
}

}  // namespace orvu
