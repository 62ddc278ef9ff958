#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/confinement/ConfinedProcess.h"
#include "platform/model/EngineMessages.h"
#include "platform/model/ModelFile.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// How a model is run.
struct EngineOptions {
    std::filesystem::path program = ConfinedProcess::installedProgram("orvu-model");
    /// Where its libraries are, besides the system's own.
    std::vector<std::filesystem::path> folders = engineFolders();
    unsigned threads = usualThreads();
    std::chrono::milliseconds patience = std::chrono::minutes{2};  ///< after an answer
    std::chrono::milliseconds start = std::chrono::seconds{20};
    std::chrono::milliseconds description = std::chrono::seconds{20};
    std::chrono::milliseconds answer = std::chrono::minutes{30};
    std::chrono::milliseconds cancelled = std::chrono::seconds{1};

    [[nodiscard]] static std::vector<std::filesystem::path> engineFolders();
    /// All processors but one, which stays the browser's; no more than do a model good.
    [[nodiscard]] static unsigned usualThreads();
};

/// A process that runs the model of one file. It reaches that file, and nothing else: no other, no
/// network and no process. It ends with this, and by itself after a while without a question.
class ModelProcess {
public:
    /// `loop` must outlive this. Nothing is started before there is something to ask. Bubblewrap
    /// shuts the process in, or, where that can't work, it does so itself.
    ModelProcess(MainLoop& loop, EngineOptions options, std::filesystem::path file);
    ModelProcess(const ModelProcess&) = delete;
    ModelProcess& operator=(const ModelProcess&) = delete;
    ~ModelProcess();

    [[nodiscard]] const std::filesystem::path& file() const;
    /// A `description`, or a `failure`.
    [[nodiscard]] Future<EngineAnswer> describe();
    /// A `reply`, or a `failure`. Dropping the future ends the work at once; the model stays loaded
    /// if the process does stop.
    [[nodiscard]] Future<EngineAnswer> ask(const std::string& instructions,
                                           const std::string& prompt);
    /// Whether there is a process.
    [[nodiscard]] bool isRunning() const;

private:
    struct State;

    [[nodiscard]] Future<EngineAnswer> request(EngineRequest::Kind kind, const std::string& content,
                                               std::size_t instructions,
                                               std::chrono::milliseconds limit);

    const std::shared_ptr<State> state_;
};

}  // namespace orvu
