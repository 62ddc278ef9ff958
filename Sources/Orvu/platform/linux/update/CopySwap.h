#pragma once

#include "platform/linux/update/UpdateFolder.h"
#include "platform/linux/update/UpdateKey.h"
#include "update/SwapRecord.h"

#include <cstdint>
#include <optional>

namespace orvu {

/// Whether the application runs already when it is started.
enum class StartedBeside { nothing, running };

/// Brings a staged copy into the application's place, watches over its first starts and takes it
/// back. The record says what is under way before anything is done, and the copies themselves tell
/// how far it came; so whoever comes next finishes what was broken off at any point. Each operation
/// locks the folder.
class CopySwap {
public:
    /// Without a key no staged copy is brought in. `folder` must outlive this.
    CopySwap(UpdateFolder& folder, std::optional<UpdateKey> key) : folder_(folder), key_(key) {}

    /// Brings the staged copy in, if it is signed, unchanged since and newer.
    bool swap();
    /// What each start does first: finishes what was broken off, counts the starts of a new copy,
    /// and takes it back if it was started often enough without a window. A start beside a running
    /// application doesn't count. False if there is no application to start.
    bool prepareStart(StartedBeside beside = StartedBeside::nothing);
    /// Keeps the running copy, of this build, and removes the one before it.
    void confirm(std::int64_t build);

    [[nodiscard]] SwapRecord record() const;

private:
    [[nodiscard]] std::int64_t build(const char* name) const { return folder_.facts(name).build; }
    [[nodiscard]] bool hasApplication() const;
    [[nodiscard]] std::optional<SignedText> stagedText() const;
    [[nodiscard]] bool isNewer(const SignedText& text) const;
    bool save(const SwapRecord& record);
    bool replace(const char* incoming, const char* outgoing, std::int64_t wanted);
    bool giveWay(const char* incoming, const char* outgoing);
    void continueSwap(SwapRecord record);
    bool completeSwap(SwapRecord record);
    void abandon(SwapRecord record);
    void countStart(SwapRecord record);
    void takeBack(SwapRecord record);
    void completeTakingBack(SwapRecord record);
    void restoreApplication();

    UpdateFolder& folder_;
    const std::optional<UpdateKey> key_;
};

}  // namespace orvu
