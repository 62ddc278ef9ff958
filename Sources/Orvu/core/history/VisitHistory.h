#pragma once

#include "core/Records.h"
#include "core/history/EncodedVisits.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace orvu {

/// A history, oldest first, and its stored form, which is always that of these visits.
class VisitHistory {
public:
    /// How many visits a history keeps, the latest ones.
    static constexpr std::size_t addressLimit = 8192;  ///< bytes; a longer one is no visit
    static constexpr std::size_t limit = 5000;
    /// How long a visit is kept, at the next start.
    static constexpr int days = 30;

    [[nodiscard]] const std::vector<Visit>& visits() const { return visits_; }
    /// As one JSON array. It stands until the next change.
    [[nodiscard]] std::string_view encoded() const { return encoded_.text(); }
    /// The visits at or after `start`.
    [[nodiscard]] std::vector<Visit> since(Date start) const;
    /// The last `count` of them, the newest first.
    [[nodiscard]] std::vector<Visit> latestSince(Date start, std::size_t count) const;

    // Each of these tells whether something is different afterwards.
    bool assign(std::vector<Visit> visits);
    /// Adds the latest visit, unless it is one more of the same address.
    bool add(Visit visit);
    bool remove(const Uuid& id);
    /// Forgets what was at or after `start`, or everything.
    bool removeSince(const std::optional<Date>& start);

    /// Two histories as one: visits of one address in one second count once. Nothing if `added`
    /// has no new one; otherwise how many are new is put into `newOnes`.
    [[nodiscard]] static std::optional<std::vector<Visit>> merged(std::vector<Visit> stored,
                                                                  const std::vector<Visit>& added,
                                                                  int& newOnes);

private:
    bool removeWhere(const auto& condition);

    std::vector<Visit> visits_;
    EncodedVisits encoded_;
};

}  // namespace orvu
