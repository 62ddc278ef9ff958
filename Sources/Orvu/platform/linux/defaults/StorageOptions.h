#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace orvu {

/// When the older copy of a database is made, and when what was deleted is removed from it.
struct HousekeepingPace {
    using Duration = std::chrono::milliseconds;

    Duration afterStart = std::chrono::seconds{1};            ///< what an earlier run left to do
    Duration afterChange = std::chrono::seconds{10};          ///< after a value moved on
    Duration afterDeletion = std::chrono::seconds{0};         ///< after a person deleted something
    Duration afterFailure = std::chrono::minutes{1};          ///< until the next attempt
    Duration firstBackup = std::chrono::seconds{30};          ///< after the start, not before
    Duration nextBackup = std::chrono::hours{1};              ///< until its age is looked at again
    std::chrono::seconds backupAge = std::chrono::hours{24};  ///< at which it is made anew
};

struct StorageOptions {
    /// Keys whose values change with each page, as a session does. When such a value loses
    /// something, nobody has deleted anything. Also with a profile's ending, behind a dot.
    std::vector<std::string> passing;
    HousekeepingPace pace;
};

}  // namespace orvu
