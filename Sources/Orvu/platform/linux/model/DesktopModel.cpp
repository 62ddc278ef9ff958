#include "platform/linux/model/DesktopModel.h"

#include <utility>

namespace orvu {

DesktopModel::DesktopModel(LocalModel& servers, FileModel& files)
    : servers_(servers), files_(files) {
    const sigc::slot<void()> tell = [this] { tellChange(); };
    connections_ = {servers_.connectChanged(tell), files_.connectChanged(tell)};
}

DesktopModel::~DesktopModel() {
    for (auto& each : connections_) each.disconnect();
}

LanguageModel& DesktopModel::source() const {
    const bool hasServer = servers_.isKnown() && !servers_.unavailableReason();
    const bool hasFile = files_.isKnown() && !files_.unavailableReason();
    const bool takesFile = hasFile && !(hasServer && servers_.isLoaded());
    return takesFile ? static_cast<LanguageModel&>(files_) : servers_;
}

std::optional<UnavailableReason> DesktopModel::unavailableReason() const {
    const auto reason = source().unavailableReason();
    if (!reason || !files_.isKnown()) return std::nullopt;
    return reason == UnavailableReason::noServer ? files_.unavailableReason() : reason;
}

std::string DesktopModel::modelName() const { return source().modelName(); }

void DesktopModel::look() {
    servers_.look();
    files_.look();
}

void DesktopModel::tellChange() {
    Said now{unavailableReason(), modelName()};
    if (now == said_) return;
    said_ = std::move(now);
    changed_.emit();
}

Future<ModelResponse> DesktopModel::respond(const std::string& prompt,
                                            const std::string& instructions) {
    return answers_.start(answerTo(prompt, instructions));
}

Task<ModelResponse> DesktopModel::answerTo(std::string prompt, std::string instructions) {
    // Each waits for a look of its own if it doesn't know yet.
    if (!servers_.isSettled()) co_await servers_.lookEnd();
    if (!files_.isSettled()) co_await files_.lookEnd();
    LanguageModel& first = source();
    ModelResponse response = co_await first.respond(prompt, instructions);
    const bool isServerGone = !response.succeeded && &first == &servers_ &&
                              servers_.unavailableReason() && !files_.unavailableReason();
    if (isServerGone) response = co_await files_.respond(prompt, instructions);
    co_return response;
}

}  // namespace orvu
