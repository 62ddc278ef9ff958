#include "platform/linux/confinement/Confinement.h"
#include "platform/linux/confinement/ConfinementProbe.h"
#include "platform/linux/model/engine/Engine.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace orvu;

constexpr int modelFile = STDERR_FILENO + 1;

bool readWhole(void* target, std::size_t size) {
    auto* at = static_cast<char*>(target);
    while (size > 0) {
        const auto count = read(STDIN_FILENO, at, size);
        if (count <= 0) return false;
        at += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeWhole(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool say(EngineAnswer answer, std::uint32_t number) {
    answer.number = number;
    return writeWhole(answer.bytes());
}

/// What this process is asked for, by its arguments.
struct Arguments {
    std::vector<std::string_view> words;

    [[nodiscard]] bool have(std::string_view word) const {
        return std::ranges::find(words, word) != words.end();
    }
    /// The number behind a word.
    [[nodiscard]] int number(std::string_view word, int usual) const {
        const auto at = std::ranges::find(words, word);
        if (at == words.end() || at + 1 == words.end()) return usual;
        int value = usual;
        std::from_chars((at + 1)->data(), (at + 1)->data() + (at + 1)->size(), value);
        return std::max(value, 1);
    }
};

/// A request that was read whole.
struct Job {
    EngineRequest head;
    std::string content;
};

/// Does one request after the other in a thread of its own, so that this one hears at once when it
/// is to stop.
class Desk {
public:
    Desk(Engine& engine, std::chrono::seconds patience) : engine_(engine), patience_(patience) {}

    /// False for what must not be asked now.
    [[nodiscard]] bool take(Job job) {
        const std::scoped_lock lock{mutex_};
        if (job.head.kind == EngineRequest::Kind::cancel) {
            if (isBusy_) engine_.cancel();
            return true;
        }
        if (isBusy_) return false;
        isBusy_ = true;
        engine_.allow();
        job_ = std::move(job);
        arrived_.notify_one();
        return true;
    }

    /// Works until nobody asked for a while.
    void work() {
        std::unique_lock lock{mutex_};
        while (arrived_.wait_for(lock, patience_, [this] { return job_.has_value(); })) {
            const Job job = std::move(*job_);
            job_.reset();
            lock.unlock();
            const EngineAnswer answer = answerTo(job);
            lock.lock();
            isBusy_ = false;
            if (!say(answer, job.head.number)) break;
        }
        _exit(EXIT_SUCCESS);
    }

private:
    [[nodiscard]] EngineAnswer answerTo(const Job& job) const {
        try {
            if (job.head.kind == EngineRequest::Kind::describe) return engine_.describe();
            const auto split = job.head.instructions;
            return engine_.answer(job.content.substr(0, split), job.content.substr(split));
        } catch (const std::bad_alloc&) {
            return EngineAnswer::of(ModelFailure::noMemory);
        } catch (const std::exception&) {
            return EngineAnswer::of(ModelFailure::unloadable);
        }
    }

    Engine& engine_;
    const std::chrono::seconds patience_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::optional<Job> job_;
    bool isBusy_ = false;
};

/// Hears requests until nobody is there any more.
void hear(Desk& desk) {
    EngineRequest head;
    while (readWhole(&head, sizeof(head)) && head.isSound()) {
        Job job{head, std::string(head.length, '\0')};
        if (!readWhole(job.content.data(), job.content.size()) || !desk.take(std::move(job)))
            return;
    }
}

/// The most addresses that a model may take: its file, once more for weights in the order in which
/// this processor reads them, a context, and the libraries.
std::uint64_t memoryFor(std::uint64_t size) {
    constexpr std::uint64_t besides = std::uint64_t{6} << 30;
    return 2 * size + besides;
}

}  // namespace

/// Runs the model that descriptor 3 has open; without arguments within namespaces that others made.
///   --own-namespaces   makes them itself
///   --threads N        works with so many
///   --patience N       ends when nobody asked for so many seconds
///   --probe            gives up what it gives up, and says what it still could do
int main(int argc, char** argv) {
    const Arguments arguments{{argv + std::min(argc, 1), argv + argc}};
    struct stat facts{};
    const bool hasFile = fstat(modelFile, &facts) == 0 && S_ISREG(facts.st_mode);
    const auto size = hasFile ? static_cast<std::uint64_t>(facts.st_size) : 0;
    limitResources({.memory = memoryFor(size), .seconds = RLIM_INFINITY});
    close_range(modelFile + 1, ~0U, 0);
    constexpr int kindness = 10;  // to all that people wait for
    static_cast<void>(setpriority(PRIO_PROCESS, 0, kindness));

    const bool own = arguments.have("--own-namespaces");
    if (!own || leaveNamespaces()) limitThreads();
    clearenv();
    std::FILE* const file = hasFile ? fdopen(modelFile, "rb") : nullptr;
    const bool hasLibraries = Engine::loadLibraries();
    static_cast<void>(giveUpFiles());
    const bool isShutIn = giveUpCalls({SYS_lseek, SYS_pread64, SYS_sysinfo, SYS_fadvise64});
    if (arguments.have("--probe")) {
        return writeWhole(probeConfinement()) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (!isShutIn || !hasLibraries) {
        const auto failure = isShutIn ? ModelFailure::processor : ModelFailure::notShutIn;
        return say(EngineAnswer::of(failure), 0) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (!file || !say({}, 0)) return EXIT_FAILURE;

    constexpr int minutes = 2;
    Engine engine{file, size, arguments.number("--threads", 1)};
    Desk desk{engine, std::chrono::seconds{arguments.number("--patience", minutes * 60)}};
    std::thread worker{[&desk] { desk.work(); }};
    worker.detach();
    hear(desk);
    _exit(EXIT_SUCCESS);
}
