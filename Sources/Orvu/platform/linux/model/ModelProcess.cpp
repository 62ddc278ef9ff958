#include "platform/linux/model/ModelProcess.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <deque>
#include <thread>
#include <utility>

namespace orvu {
namespace {

using Isolation = ConfinedProcess::Isolation;

std::string bytesOf(const EngineRequest& request) {
    return {reinterpret_cast<const char*>(&request), sizeof(request)};
}

/// Opens what may be anything by now, without waiting for somebody at its other end.
FileDescriptor openedModel(const std::filesystem::path& path) {
    FileDescriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    struct stat facts{};
    const bool isFile = file && fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode);
    return isFile ? std::move(file) : FileDescriptor{};
}

std::int64_t inSeconds(std::chrono::milliseconds time) {
    return std::chrono::ceil<std::chrono::seconds>(time).count();
}

}  // namespace

std::vector<std::filesystem::path> EngineOptions::engineFolders() {
    const auto folder = ConfinedProcess::installedProgram("orvu-model").parent_path();
    return {(folder / ORVU_FROM_PROGRAM_TO_LIBRARIES).lexically_normal(),
            (folder / "../llama/libraries").lexically_normal()};  // where a build fetched them
}

unsigned EngineOptions::usualThreads() {
    constexpr unsigned most = 16;
    return std::clamp(std::thread::hardware_concurrency(), 2U, most + 1) - 1;
}

struct ModelProcess::State : std::enable_shared_from_this<State> {
    State(MainLoop& mainLoop, EngineOptions given, std::filesystem::path path)
        : loop(mainLoop), options(std::move(given)), file(std::move(path)) {}

    MainLoop& loop;
    const EngineOptions options;
    const std::filesystem::path file;
    Isolation isolation = Isolation::bubblewrap;
    std::unique_ptr<ConfinedProcess> process;
    EngineAnswerReader reader;
    bool isReady = false;
    std::uint32_t lastNumber = 0;
    /// What the process is at; nobody may want it any more.
    struct Work {
        std::uint32_t number = 0;
        std::string bytes;
        std::chrono::milliseconds limit{};
        Promise<EngineAnswer> answer;
    };
    std::optional<Work> running;
    std::deque<Work> waiting;
    Scheduled deadline;
    Scheduled idle;

    void add(Work work) {
        work.answer.onAbandoned([state = weak_from_this(), number = work.number] {
            if (const auto live = state.lock()) live->abandon(number);
        });
        waiting.push_back(std::move(work));
        if (!running) startNext();
    }

    void startNext() {
        running.reset();
        if (waiting.empty()) {
            idle = loop.after(options.patience, [this] { process.reset(); });
            return;
        }
        idle.cancel();
        running = std::move(waiting.front());
        waiting.pop_front();
        begin();
    }

    void begin() {
        if (process && isReady) return tell();
        if (!process) start();
    }

    void tell() {
        deadline = loop.after(running->limit, [this] { fail(ModelFailure::slow); });
        process->tell(running->bytes);
    }

    void start() {
        const FileDescriptor opened = openedModel(file);
        // Whoever asked hears of what can't be in a later turn, as in every case.
        constexpr std::chrono::milliseconds soon{0};
        if (!opened) {
            deadline = loop.after(soon, [this] { fail(ModelFailure::unloadable); });
            return;
        }
        isReady = false;
        reader = {};
        const ConfinedProcess::Program program{
            .file = options.program,
            .arguments = {"--threads", std::to_string(options.threads), "--patience",
                          std::to_string(inSeconds(2 * options.patience))},
            .folders = options.folders};
        process = ConfinedProcess::start(
            ConfinedProcess::command(program, isolation),
            {.said = [this](std::string_view bytes) { hear(bytes); }, .ended = [this] { end(); }},
            opened);
        deadline = loop.after(process ? options.start : soon, [this] { end(); });
    }

    void hear(std::string_view bytes) {
        const auto keepAlive = shared_from_this();
        for (const auto& answer : reader.add(bytes)) take(answer);
        if (reader.isBroken()) end();
    }

    void take(const EngineAnswer& answer) {
        if (!isReady) {
            isReady = answer.kind == EngineAnswer::Kind::ready;
            if (!isReady) return fail(answer.failure());
            if (running) tell();
            return;
        }
        if (!running || answer.number != running->number) return end();
        settle(answer);
    }

    /// The process ended, said what makes no sense, or could not be started.
    void end() {
        const bool wasStarting = !isReady;
        process.reset();
        if (!running) return;
        if (wasStarting && std::exchange(isolation, Isolation::own) != Isolation::own) {
            return start();
        }
        fail(wasStarting ? ModelFailure::notShutIn : ModelFailure::brokeOff);
    }

    void fail(ModelFailure failure) {
        process.reset();
        if (running) settle(EngineAnswer::of(failure));
    }

    void settle(const EngineAnswer& answer) {
        const auto keepAlive = shared_from_this();
        deadline.cancel();
        const auto promise = running->answer;
        startNext();  // first: whoever hears of the answer may end this
        promise.resolve(answer);
    }

    /// Nobody wants the answer any more: the process is to stop, or is ended.
    void abandon(std::uint32_t number) {
        std::erase_if(waiting, [&](const auto& each) { return each.number == number; });
        if (!running || running->number != number) return;
        if (!process || !isReady) return fail(ModelFailure::brokeOff);
        process->tell(bytesOf({.number = number, .kind = EngineRequest::Kind::cancel}));
        deadline = loop.after(options.cancelled, [this] { fail(ModelFailure::brokeOff); });
    }

    void close() {
        deadline.cancel();
        idle.cancel();
        process.reset();
        running.reset();
        waiting.clear();
    }
};

ModelProcess::ModelProcess(MainLoop& loop, EngineOptions options, std::filesystem::path file)
    : state_(std::make_shared<State>(loop, std::move(options), std::move(file))) {}

ModelProcess::~ModelProcess() { state_->close(); }

const std::filesystem::path& ModelProcess::file() const { return state_->file; }
bool ModelProcess::isRunning() const { return state_->process != nullptr; }

Future<EngineAnswer> ModelProcess::request(EngineRequest::Kind kind, const std::string& content,
                                           std::size_t instructions,
                                           std::chrono::milliseconds limit) {
    const EngineRequest head{.number = ++state_->lastNumber,
                             .kind = kind,
                             .instructions = static_cast<std::uint32_t>(instructions),
                             .length = static_cast<std::uint32_t>(content.size())};
    State::Work work{head.number, bytesOf(head) + content, limit, {}};
    auto future = work.answer.future();
    if (content.size() > EngineRequest::maxLength) {
        work.answer.resolve(EngineAnswer::of(ModelFailure::contextTooSmall));
    } else {
        state_->add(std::move(work));
    }
    return future;
}

Future<EngineAnswer> ModelProcess::describe() {
    return request(EngineRequest::Kind::describe, "", 0, state_->options.description);
}

Future<EngineAnswer> ModelProcess::ask(const std::string& instructions, const std::string& prompt) {
    return request(EngineRequest::Kind::ask, instructions + prompt, instructions.size(),
                   state_->options.answer);
}

}  // namespace orvu
