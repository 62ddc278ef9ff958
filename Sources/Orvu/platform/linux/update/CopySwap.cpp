#include "platform/linux/update/CopySwap.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/update/StagedCopy.h"

#include <algorithm>

namespace orvu {
namespace {

using Names = UpdateNames;
using Phase = SwapRecord::Phase;

constexpr std::size_t longestRecord = 256;                            // bytes
constexpr std::size_t longestSignedText = SignedText::longest + 256;  // bytes

}  // namespace

SwapRecord CopySwap::record() const {
    const auto text = folder_.read(Names::record, longestRecord);
    return SwapRecord::parse(text.value_or("")).value_or(SwapRecord{});
}

bool CopySwap::save(const SwapRecord& record) {
    return record == this->record() ||
           folder_.write(Names::record, Names::recordDraft, record.string());
}

bool CopySwap::hasApplication() const { return folder_.hasFolder(Names::application); }

bool CopySwap::isNewer(const SignedText& text) const {
    return text.identity == applicationId &&
           text.build > std::max(build(Names::application), record().takenBack);
}

/// The signed text of the staged copy, if that is as it says.
std::optional<SignedText> CopySwap::stagedText() const {
    const auto bytes = folder_.read(Names::signedText, longestSignedText);
    if (!key_ || !bytes) return std::nullopt;
    auto text = key_->open(*bytes);
    if (!text || !isNewer(*text)) return std::nullopt;
    if (!isCopyOf(folder_.path(Names::staged), *text)) return std::nullopt;
    const auto facts = folder_.facts(Names::staged);
    const bool saysSo = facts.build == text->build && facts.version == text->version;
    return saysSo ? text : std::nullopt;
}

bool CopySwap::swap() {
    if (!folder_.lock() || !hasApplication()) return false;
    if (record().phase == Phase::takingBack) return false;
    const auto text = stagedText();
    if (!text) return false;
    SwapRecord next = record();
    next.phase = Phase::swapping;
    next.from = build(Names::application);
    next.to = text->build;
    return save(next) && completeSwap(next);
}

/// Brings `incoming`, the copy of the build `wanted`, into the application's place, and the
/// application to `outgoing`. Goes on wherever an earlier attempt ended.
bool CopySwap::replace(const char* incoming, const char* outgoing, std::int64_t wanted) {
    if (hasApplication() && build(Names::application) == wanted) {
        // Only an exchange leaves the other copy under the name of the one that came in.
        return !folder_.hasFolder(incoming) || folder_.rename(incoming, outgoing);
    }
    if (!folder_.hasFolder(incoming)) return false;
    if (!hasApplication()) return folder_.rename(incoming, Names::application);
    if (!folder_.remove(outgoing)) return false;
    if (folder_.exchange(Names::application, incoming)) return folder_.rename(incoming, outgoing);
    return giveWay(incoming, outgoing);
}

/// The way for file systems that can't exchange: for a moment there is no application.
bool CopySwap::giveWay(const char* incoming, const char* outgoing) {
    if (!folder_.rename(Names::application, outgoing)) return false;
    if (folder_.rename(incoming, Names::application)) return true;
    folder_.rename(outgoing, Names::application);
    return false;
}

void CopySwap::continueSwap(SwapRecord record) {
    const bool isIn = hasApplication() && build(Names::application) == record.to;
    const auto text = isIn ? std::nullopt : stagedText();
    if (isIn || (text && text->build == record.to)) {
        completeSwap(record);
    } else {
        abandon(record);
    }
}

bool CopySwap::completeSwap(SwapRecord record) {
    if (!replace(Names::staged, Names::previous, record.to)) return false;
    record.phase = Phase::trial;
    record.starts = 0;
    return save(record);
}

/// Gives up a swap whose staged copy isn't what it was.
void CopySwap::abandon(SwapRecord record) {
    restoreApplication();
    folder_.remove(Names::staged);
    folder_.remove(Names::signedText);
    record.phase = Phase::none;
    save(record);
}

bool CopySwap::prepareStart(StartedBeside beside) {
    folder_.lock();  // without it, what there is can be started all the same
    const SwapRecord known = record();
    if (known.phase == Phase::swapping) continueSwap(known);
    if (known.phase == Phase::takingBack) completeTakingBack(known);
    if (!hasApplication()) restoreApplication();
    const bool isTrial = record().phase == Phase::trial;
    if (isTrial && beside == StartedBeside::nothing) countStart(record());
    return hasApplication();
}

void CopySwap::countStart(SwapRecord record) {
    if (build(Names::application) != record.to) {
        record.phase = Phase::none;  // somebody put another copy there
    } else if (record.starts >= SwapRecord::mostStarts) {
        takeBack(record);
        return;
    } else {
        ++record.starts;
    }
    save(record);
}

void CopySwap::takeBack(SwapRecord record) {
    if (build(Names::previous) != record.from || !folder_.hasFolder(Names::previous)) return;
    record.phase = Phase::takingBack;
    record.takenBack = std::max(record.takenBack, record.to);
    if (save(record)) completeTakingBack(record);
}

void CopySwap::completeTakingBack(SwapRecord record) {
    if (!replace(Names::previous, Names::refused, record.from)) return;
    record.phase = Phase::none;
    if (save(record)) folder_.remove(Names::refused);
}

void CopySwap::restoreApplication() {
    if (hasApplication()) return;
    for (const char* const name : {Names::previous, Names::refused, Names::staged}) {
        const bool isWhole = name != Names::staged || stagedText();
        if (isWhole && folder_.hasFolder(name) && folder_.rename(name, Names::application)) return;
    }
}

void CopySwap::confirm(std::int64_t build) {
    if (!folder_.lock()) return;
    SwapRecord next = record();
    if (next.phase == Phase::trial && next.to == build) next.phase = Phase::none;
    if (next.phase != Phase::none || !save(next)) return;
    folder_.remove(Names::previous);
    folder_.remove(Names::refused);
}

}  // namespace orvu
