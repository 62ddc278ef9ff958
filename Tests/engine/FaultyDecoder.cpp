// Speaks as the image decoder does, and goes wrong as the picture that it is given says. Under one
// of the names below it goes wrong before it is asked.
#include "platform/linux/images/DecoderMessages.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
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

std::string bytesOf(const DecoderAnswer& answer) {
    return {reinterpret_cast<const char*>(&answer), sizeof(answer)};
}

void say(const DecoderAnswer& answer) { say(bytesOf(answer)); }

bool hear(char* target, std::size_t size) {
    while (size > 0) {
        const auto count = read(STDIN_FILENO, target, size);
        if (count <= 0) return false;
        target += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

[[noreturn]] void hang() {
    for (;;) pause();
}

[[noreturn]] void flood() {
    const std::string much(100'000, 'x');
    for (;;) say(much);
}

std::string garbage() {
    std::mt19937 random{7};
    std::string bytes(5000, '\0');
    for (char& each : bytes) each = static_cast<char>(random());
    return bytes;
}

[[noreturn]] void crash() {
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
    std::abort();
}

/// A picture of one red pixel, and more in the same breath.
void sayPicture(std::uint32_t number, const std::string& more = "") {
    say(bytesOf({.number = number, .width = 1, .height = 1, .length = 4}) +
        std::string{"\xFF\0\0\xFF", 4} + more);
}

void answer(std::uint32_t number, std::string_view wish) {
    if (wish == "crash") crash();
    if (wish == "hang") hang();
    if (wish == "leave") std::exit(EXIT_SUCCESS);
    if (wish == "flood") flood();
    if (wish == "garbage") return say(garbage());
    if (wish == "other number") return sayPicture(number + 1);
    if (wish == "huge") {
        say({.number = number, .width = 100'000, .height = 100'000, .length = 1'345'294'336});
        flood();
    }
    if (wish == "wide") return say({.number = number, .width = 257, .height = 1, .length = 1028});
    if (wish == "short") {
        say({.number = number, .width = 1, .height = 1, .length = 3});
        return say("abc");
    }
    if (wish == "half") {
        say({.number = number, .width = 1, .height = 1, .length = 4});
        say("ab");
        std::exit(EXIT_SUCCESS);
    }
    if (wish == "more") return sayPicture(number, garbage());
    sayPicture(number);
    if (wish == "crash later") crash();
    if (wish == "flood later") {
        usleep(100'000);
        flood();
    }
}

}  // namespace

int main(int, char** argv) {
    const std::string_view name{argv[0]};
    if (name.ends_with("mute")) hang();
    if (name.ends_with("gone")) return EXIT_FAILURE;
    if (name.ends_with("babbling")) say(garbage());
    say(DecoderAnswer{});
    DecoderRequest request;
    while (hear(reinterpret_cast<char*>(&request), sizeof(request))) {
        std::string wish(request.length, '\0');
        if (!hear(wish.data(), wish.size())) break;
        answer(request.number, wish);
    }
}
