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
    std::erase_if(answers_, [](const auto& each) { return each->size() == 0; });
    const auto scope = answers_.emplace_back(std::make_shared<TaskScope>());
    const Promise<ModelResponse> promise;
    auto future = promise.future();
    promise.onAbandoned([work = std::weak_ptr{scope}] {
        if (const auto live = work.lock()) live->cancel();
    });
    scope->start(answer(prompt, instructions, promise));
    return future;
}

Task<void> LocalModel::answer(std::string prompt, std::string instructions,
                              Promise<ModelResponse> promise) {
    promise.resolve(co_await answerTo(std::move(prompt), std::move(instructions)));
}

Task<ModelResponse> LocalModel::answerTo(std::string prompt, std::string instructions) {
    const bool isKnown = found_ && found_->server && !isLooking_;
    if (!isKnown) co_await lookEnd();
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
