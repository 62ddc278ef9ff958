// Speaks as the program that runs models does, and goes wrong as the question that it is given says.
// Under one of the names below it goes wrong before it is asked.
#include "platform/model/EngineMessages.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <string_view>

namespace {

using namespace orvu;

void say(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count <= 0) _exit(EXIT_FAILURE);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

bool hear(void* target, std::size_t size) {
    auto* at = static_cast<char*>(target);
    while (size > 0) {
        const auto count = read(STDIN_FILENO, at, size);
        if (count <= 0) return false;
        at += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

void reply(const std::string& text, std::uint32_t number) {
    say(EngineAnswer{EngineAnswer::Kind::reply, number, text}.bytes());
}

/// Waits until it is told to stop, and does.
void waitForCancel(std::uint32_t number) {
    EngineRequest head;
    if (!hear(&head, sizeof(head)) || head.kind != EngineRequest::Kind::cancel) _exit(1);
    EngineAnswer answer = EngineAnswer::of(ModelFailure::brokeOff);
    answer.number = number;
    say(answer.bytes());
}

[[noreturn]] void hang() {
    for (;;) pause();
}

void answer(const std::string& question, std::uint32_t number) {
    if (question == "crash") std::abort();
    if (question == "leave") _exit(EXIT_SUCCESS);
    if (question == "garbage") return say(std::string(5000, '\xA7'));
    if (question == "other number") return reply("x", number + 1);
    if (question == "half") {
        say(EngineAnswer{EngineAnswer::Kind::reply, number, "They swim."}.bytes().substr(0, 20));
        _exit(EXIT_SUCCESS);
    }
    if (question == "flood") {
        for (;;) reply(std::string(1000, 'x'), number);
    }
    if (question == "hang") hang();
    if (question == "until cancelled") return waitForCancel(number);
    reply(question == "who" ? std::to_string(getpid()) : "fine: " + question, number);
}

}  // namespace

int main(int, char** argv) {
    const std::string_view name = std::strrchr(argv[0], '/') + 1;
    if (name == "mute") hang();
    if (name == "gone") return EXIT_SUCCESS;
    if (name == "babbling") say(std::string(5000, '\xA7'));
    if (name == "open") say(EngineAnswer::of(ModelFailure::notShutIn).bytes());
    say(EngineAnswer{}.bytes());
    EngineRequest head;
    while (hear(&head, sizeof(head))) {
        std::string content(head.length, '\0');
        if (!hear(content.data(), content.size())) return EXIT_FAILURE;
        if (head.kind == EngineRequest::Kind::ask) {
            answer(content.substr(head.instructions), head.number);
        }
    }
}
