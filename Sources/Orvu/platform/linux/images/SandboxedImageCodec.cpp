#include "platform/linux/images/SandboxedImageCodec.h"

#include "platform/linux/images/DecoderMessages.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvu {
namespace {

/// A picture that waits for its turn. Nothing came of it if it is settled with nullptr.
struct Job {
    DecoderRequest request;
    std::string content;
    std::function<bool()> isWanted;
    std::function<void(const DecoderAnswerReader*)> settle;
};

template <class T>
class Answer {
public:
    /// Nothing for an answer that is no answer.
    using Reading = T (DecoderAnswerReader::*)() const;

    [[nodiscard]] Future<T> future() const { return promise_.future(); }
    [[nodiscard]] Job job(DecoderRequest::Kind kind, std::string content, Reading reading) const {
        // Without a length the request is refused.
        const auto length = content.size() <= DecoderRequest::maxLength ? content.size() : 0;
        Job job;
        job.request = {.kind = kind, .length = static_cast<std::uint32_t>(length)};
        job.content = std::move(content);
        job.isWanted = [promise = promise_] { return promise.isWanted(); };
        job.settle = [promise = promise_, reading](const DecoderAnswerReader* answer) {
            promise.resolve(answer ? (answer->*reading)() : T{});
        };
        return job;
    }

private:
    Promise<T> promise_;
};

std::string_view bytesOf(const DecoderRequest& request) {
    return {reinterpret_cast<const char*>(&request), sizeof(request)};
}

}  // namespace

struct SandboxedImageCodec::State : std::enable_shared_from_this<State> {
    State(MainLoop& mainLoop, Options given) : loop(mainLoop), options(std::move(given)) {}

    MainLoop& loop;
    Options options;
    std::deque<Job> waiting;
    std::optional<Job> running;
    std::uint32_t lastNumber = 0;
    std::unique_ptr<ConfinedProcess> process;
    bool hasGreeted = false;     ///< and listens
    bool hasServed = false;      ///< a picture before this one
    DecoderAnswerReader reader;  ///< of what the process says next
    Scheduled deadline;          ///< of the picture at hand, however often it is tried
    Scheduled failure;
    Scheduled idle;

    void add(Job job) {
        waiting.push_back(std::move(job));
        startNext();
    }

    void startNext() {
        while (!running && !waiting.empty()) {
            Job next = std::move(waiting.front());
            waiting.pop_front();
            if (!next.isWanted()) continue;
            running = std::move(next);
            running->request.number = ++lastNumber;
            idle.cancel();
            deadline = loop.after(options.deadline, [this] { timeOut(); });
            give();
        }
    }

    void give() {
        if (process && hasGreeted) return tell();
        if (!process) startProcess();
    }

    void tell() {
        reader = DecoderAnswerReader{running->request};
        process->tell(bytesOf(running->request));
        process->tell(running->content);
    }

    void startProcess() {
        hasGreeted = false;
        hasServed = false;
        reader = DecoderAnswerReader{};
        process = ConfinedProcess::start(
            decoderCommand(options.decoder, options.isolation),
            {.said = [this](std::string_view bytes) { hear(bytes); }, .ended = [this] { fail(); }});
        if (process) return;
        // Whoever asked hears of it in a later turn, as in every case.
        failure = loop.after(std::chrono::milliseconds{0}, [this] { fail(); });
    }

    void hear(std::string_view bytes) {
        if (!running) return endProcess();
        const auto state = reader.add(bytes);
        if (state == DecoderAnswerReader::State::broken) return fail();
        if (state == DecoderAnswerReader::State::incomplete) return;
        if (!std::exchange(hasGreeted, true)) return tell();
        hasServed = true;
        settle(&reader);
    }

    void endProcess() {
        failure.cancel();
        process.reset();
    }

    /// The process ended, said what makes no sense, or could not be started.
    void fail() {
        const bool wasStarting = !hasGreeted;
        const bool hadServed = hasServed;
        endProcess();
        if (!running) return;
        if (wasStarting && takeOtherIsolation()) return startProcess();
        // An earlier picture may have left it damaged: a fresh one has the last word.
        if (hadServed) return startProcess();
        settle(nullptr);
    }

    /// False if there is no other.
    bool takeOtherIsolation() {
        if (options.isolation == ConfinedProcess::Isolation::own) return false;
        options.isolation = ConfinedProcess::Isolation::own;
        return true;
    }

    void timeOut() {
        if (!hasGreeted) takeOtherIsolation();
        endProcess();
        settle(nullptr);
    }

    void settle(const DecoderAnswerReader* answer) {
        const auto keepAlive = shared_from_this();
        deadline.cancel();
        const Job job = std::move(*running);
        running.reset();
        std::optional<DecoderAnswerReader> taken;
        if (answer) taken = *answer;
        startNext();  // first: whoever hears of the result may end the codec
        if (!running) idle = loop.after(options.idleTime, [this] { endProcess(); });
        job.settle(taken ? &*taken : nullptr);
    }

    void end() {
        deadline.cancel();
        idle.cancel();
        endProcess();
        waiting.clear();
        running.reset();
    }
};

SandboxedImageCodec::SandboxedImageCodec(MainLoop& loop, Options options)
    : state_(std::make_shared<State>(loop, std::move(options))) {}

SandboxedImageCodec::~SandboxedImageCodec() { state_->end(); }

Future<ImagePointer> SandboxedImageCodec::decode(std::string bytes) {
    const Answer<ImagePointer> answer;
    auto future = answer.future();
    Job job =
        answer.job(DecoderRequest::Kind::decode, std::move(bytes), &DecoderAnswerReader::image);
    if (job.request.isSound()) {
        state_->add(std::move(job));
    } else {
        job.settle(nullptr);
    }
    return future;
}

Future<std::string> SandboxedImageCodec::encodePng(ImagePointer image) {
    const Answer<std::string> answer;
    auto future = answer.future();
    Job job = answer.job(DecoderRequest::Kind::encodePng, {image->rgba.begin(), image->rgba.end()},
                         &DecoderAnswerReader::png);
    job.request.width = static_cast<std::uint32_t>(image->width);
    job.request.height = static_cast<std::uint32_t>(image->height);
    if (job.request.isSound()) {
        state_->add(std::move(job));
    } else {
        job.settle(nullptr);
    }
    return future;
}

bool SandboxedImageCodec::isRunning() const { return state_->process != nullptr; }

ConfinedProcess::Isolation SandboxedImageCodec::isolation() const {
    return state_->options.isolation;
}

}  // namespace orvu
