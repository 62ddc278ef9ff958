#include "platform/linux/model/FileModel.h"

#include "platform/model/ModelFailure.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

constexpr std::size_t memoryLimit = 4U << 20;  // bytes of the list of known models

}  // namespace

FileModel::FileModel(MainLoop& loop, FileIO& files, Options options)
    : loop_(loop),
      files_(files),
      options_(std::move(options)),
      finding_(loop, Worker::AtEnd::forget, {}) {}

std::optional<UnavailableReason> FileModel::unavailableReason() const {
    if (!isKnown_ || chosen_) return std::nullopt;
    if (!hasEngine_) return UnavailableReason::noServer;
    if (hindrance_ == ModelFailure::notShutIn) return UnavailableReason::notShutIn;
    if (hindrance_ == ModelFailure::processor) return UnavailableReason::processor;
    const bool hasAny =
        std::ranges::any_of(models_, [](const auto& each) { return each.description.canAnswer; });
    return hasAny ? UnavailableReason::noMemory : UnavailableReason::noFile;
}

std::string FileModel::modelName() const { return chosen_ ? shownName(*chosen_) : ""; }

void FileModel::look() {
    if (std::exchange(isLooking_, true)) return;
    look_.start(find());
}

Future<bool> FileModel::lookEnd() {
    const Promise<bool>& promise = waiting_.emplace_back();
    auto future = promise.future();
    look();
    return future;
}

Task<void> FileModel::recall() {
    if (std::exchange(hasRecalled_, true)) co_return;
    files_.makeFolder(options_.folder);
    const auto text = co_await files_.read(options_.memory, memoryLimit);
    if (text) models_ = decodedModels(*text);
}

Future<FileModel::Disk> FileModel::readDisk() {
    return finding_.run<Disk>(
        [places = options_.places, freeMemory = options_.freeMemory,
         program = options_.engine.program] {
            std::error_code failure;
            if (!std::filesystem::exists(program, failure)) return Disk{};
            return Disk{true, findModels(places), freeMemory()};
        },
        {});
}

Task<void> FileModel::find() {
    co_await recall();
    const Disk disk = co_await readDisk();
    const auto reason = unavailableReason();
    const std::string name = modelName();
    std::vector<KnownModel> models;
    bool isNews = models_.size() != disk.files.size();
    hindrance_.reset();
    for (const ModelFile& file : disk.files) {
        const auto known = std::ranges::find(models_, file, &KnownModel::file);
        if (known != models_.end()) {
            models.push_back(*known);
        } else if (!hindrance_) {
            isNews = true;
            KnownModel model = co_await described(file);
            models.push_back(std::move(model));
        }
    }
    // What couldn't be run wasn't read either, so it isn't remembered.
    if (hindrance_)
        std::erase_if(models, [](const auto& each) { return !each.description.canAnswer; });
    hasEngine_ = disk.hasEngine;
    models_ = std::move(models);
    if (isNews) remember();
    choose(disk.freeMemory);
    isKnown_ = true;
    isLooking_ = false;
    const auto ended = std::exchange(waiting_, {});
    if (reason != unavailableReason() || name != modelName()) changed_.emit();
    for (const auto& each : ended) each.resolve(true);
}

Task<KnownModel> FileModel::described(ModelFile file) {
    ModelProcess process{loop_, options_.engine, file.path};
    const EngineAnswer answer = co_await process.describe();
    KnownModel model{.file = std::move(file)};
    if (const auto description = answer.description()) {
        model.description = *description;
    } else if (const auto failure = answer.failure();
               failure == ModelFailure::notShutIn || failure == ModelFailure::processor) {
        hindrance_ = failure;
    }
    co_return model;
}

void FileModel::choose(std::uint64_t freeMemory) {
    // What the process at work has taken comes back when it goes.
    const bool runs = isRunning() && chosen_;
    const std::uint64_t own = runs ? chosen_->file.size : 0;
    chosen_ =
        modelToRun(models_, {.freeMemory = freeMemory + own, .threads = options_.engine.threads});
    if (process_ && (!chosen_ || process_->file() != chosen_->file.path)) process_.reset();
}

void FileModel::remember() {
    files_.makeFolder(options_.memory.parent_path());
    files_.write(options_.memory, encodedModels(models_));
}

void FileModel::noteUse(const ModelFile& file) {
    const auto used = std::ranges::find(models_, file, &KnownModel::file);
    const auto last = std::ranges::max_element(models_, {}, &KnownModel::turn);
    if (used == models_.end() || (used->turn > 0 && used->turn == last->turn)) return;
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    used->turn = last->turn < most ? last->turn + 1 : most;
    remember();
}

ModelProcess& FileModel::processFor(const std::filesystem::path& file) {
    if (!process_ || process_->file() != file) {
        process_ = std::make_unique<ModelProcess>(loop_, options_.engine, file);
    }
    return *process_;
}

Future<ModelResponse> FileModel::respond(const std::string& prompt,
                                         const std::string& instructions) {
    return answers_.start(answerTo(prompt, instructions));
}

Task<ModelResponse> FileModel::answerTo(std::string prompt, std::string instructions) {
    if (!isKnown_ || isLooking_ || !chosen_) co_await lookEnd();
    if (!chosen_) co_return ModelResponse{false, sentence(*unavailableReason())};
    const ModelFile file = chosen_->file;
    const EngineAnswer answer = co_await processFor(file.path).ask(instructions, prompt);
    if (answer.kind != EngineAnswer::Kind::reply) {
        co_return ModelResponse{false, sentence(ModelError{answer.failure()})};
    }
    noteUse(file);
    co_return ModelResponse{true, answer.content};
}

}  // namespace orvu
