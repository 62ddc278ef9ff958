#pragma once

#include "foundation/async/Future.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// Who looks after the running copy.
enum class UpdateSupport {
    own,     ///< it may replace itself
    system,  ///< a package or an administrator does, or it was built without a server
};

/// What the swap of the two copies is followed by.
enum class AfterSwap { startAgain, nothing };

/// What an update has to be.
struct ExpectedUpdate {
    std::string version;
    std::int64_t build = 0;
    std::int64_t newerThan = 0;  ///< the build must be greater than this
    std::string signedText;      ///< as it came from the server
};

/// Puts an update beside the application, and into its place. What goes wrong leaves the disk as
/// it was.
class UpdateInstaller {
public:
    struct Staged {
        std::filesystem::path path{};  ///< the unpacked update
        std::string failure{};         ///< a sentence for people, empty if there is none
    };

    virtual ~UpdateInstaller() = default;

    [[nodiscard]] virtual UpdateSupport support() const = 0;
    /// The greatest build that was taken back because it didn't start; 0 if there is none.
    [[nodiscard]] virtual std::int64_t takenBack() const = 0;

    /// Where the archive is to be written: in a new folder that only this person can open. Nothing
    /// if there can't be one.
    [[nodiscard]] virtual Future<std::optional<std::filesystem::path>> prepare() = 0;
    /// The SHA-256 of the archive in lower-case hexadecimal; empty if it can't be read.
    [[nodiscard]] virtual Future<std::string> digest() = 0;
    /// Checks the archive against its signed text, unpacks it and checks what came out.
    [[nodiscard]] virtual Future<Staged> stage(ExpectedUpdate expected) = 0;
    /// Removes what `prepare` made.
    virtual void discard() = 0;

    /// Starts the program that waits for the end of this process and swaps the copies. Gives the
    /// system's description of a failure.
    [[nodiscard]] virtual std::optional<std::string> launchSwap(AfterSwap after) = 0;
    /// Says that this copy has shown a window, so that it stays. The previous one goes.
    virtual void confirmStart() = 0;
};

}  // namespace orvu
