#include "platform/linux/model/LocalModel.h"

#include "platform/model/ModelFailure.h"

#include <utility>

namespace orvu {

LocalModel::LocalModel(MainLoop& loop) : LocalModel(loop, Options{}) {}

LocalModel::LocalModel(MainLoop& loop, Options options)
    : options_(std::move(options)),
      client_(loop, options_.owner),
      search_(client_, options_.ports, options_.lookLimit) {}

std::string LocalModel::modelName() const {
    return found_ && found_->server ? found_->server->model : "";
}

void LocalModel::look() {
    if (std::exchange(isLooking_, true)) return;
    look_.start(find());
}

Task<void> LocalModel::find() {
    FoundServer found = co_await search_.find();
    const std::string name = modelName();
    const auto reason = unavailableReason();
    found_ = std::move(found);
    isLooking_ = false;
    const bool isChanged = reason != unavailableReason() || name != modelName();
    const auto ended = std::exchange(waiting_, {});
    if (isChanged) changed_.emit();
    for (const auto& each : ended) each.resolve(true);
}

Future<bool> LocalModel::lookEnd() {
    const Promise<bool>& promise = waiting_.emplace_back();
    auto future = promise.future();
    look();
    return future;
}

Future<ModelResponse> LocalModel::respond(const std::string& prompt,
                                          const std::string& instructions) {
    return answers_.start(answerTo(prompt, instructions));
}

Task<ModelResponse> LocalModel::answerTo(std::string prompt, std::string instructions) {
    if (!isSettled()) co_await lookEnd();
    for (bool isSecond = false;; isSecond = true) {
        if (!found_->server) co_return ModelResponse{false, sentence(*found_->reason)};
        ServerQuestion question{client_, *found_->server, options_.answer, options_.lookLimit};
        ServerQuestion::Result result = co_await question.ask(prompt, instructions);
        if (!result.error) co_return ModelResponse{true, std::move(result.reply)};
        const std::string text = sentence(*result.error);
        if (result.wasReached || isSecond) co_return ModelResponse{false, text};
        co_await lookEnd();
    }
}

}  // namespace orvu
