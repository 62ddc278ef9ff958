#pragma once

#include "foundation/async/Future.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace orvu {

/// Decides who may fetch now, so that hosts that take their time can't hold up what comes from
/// others: so many fetch in all, and so many from one host. Whoever waits for the host from which
/// the fewest fetch is next, and among these who asked first.
class FetchTurns {
    struct State;

public:
    struct Limits {
        std::size_t inAll = 0;
        std::size_t perHost = 0;
    };

    /// The right to fetch. It goes to somebody else when this goes.
    class Turn {
    public:
        Turn(std::weak_ptr<State> turns, std::string host)
            : turns_(std::move(turns)), host_(std::move(host)) {}
        Turn(Turn&& other) noexcept = default;
        Turn& operator=(Turn&&) = delete;
        ~Turn();

    private:
        std::weak_ptr<State> turns_;
        std::string host_;
    };

    explicit FetchTurns(Limits limits);
    FetchTurns(const FetchTurns&) = delete;
    FetchTurns& operator=(const FetchTurns&) = delete;
    ~FetchTurns() { close(); }

    /// A turn to fetch from `host`. Dropping the future is giving up.
    [[nodiscard]] Future<Turn> next(const std::string& host);
    /// From now on nobody gets a turn.
    void close();

private:
    const std::shared_ptr<State> state_;
};

}  // namespace orvu
