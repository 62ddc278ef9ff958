#include "platform/linux/images/DecoderMessages.h"
#include "platform/linux/confinement/Confinement.h"
#include "platform/linux/confinement/ConfinementProbe.h"
#include "platform/linux/images/decoder/PictureDecoding.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace orvu;

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

bool say(const DecoderAnswer& head, std::string_view content) {
    return writeWhole({reinterpret_cast<const char*>(&head), sizeof(head)}) && writeWhole(content);
}

bool answer(const DecoderRequest& request, const std::string& bytes) {
    DecoderAnswer head{.number = request.number};
    if (request.kind == DecoderRequest::Kind::encodePng) {
        const std::string png = encodedPng({static_cast<int>(request.width),
                                            static_cast<int>(request.height),
                                            {bytes.begin(), bytes.end()}});
        head.length = static_cast<std::uint32_t>(png.size());
        return say(head, png);
    }
    const auto image = decodedPicture(bytes);
    if (!image) return say(head, {});
    head.width = static_cast<std::uint32_t>(image->width);
    head.height = static_cast<std::uint32_t>(image->height);
    head.length = static_cast<std::uint32_t>(image->rgba.size());
    return say(head, {reinterpret_cast<const char*>(image->rgba.data()), image->rgba.size()});
}

/// Answers until nobody asks any more.
int serve() {
    if (!say({}, {})) return EXIT_FAILURE;
    DecoderRequest request;
    while (readWhole(&request, sizeof(request))) {
        if (!request.isSound()) return EXIT_FAILURE;
        std::string bytes(request.length, '\0');
        if (!readWhole(bytes.data(), bytes.size()) || !answer(request, bytes)) return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

void draw(const std::string& content) {
    static_cast<void>(
        decodedPicture("<svg xmlns='http://www.w3.org/2000/svg'>" + content + "</svg>"));
}

/// Has the libraries open what they open at the first picture of each kind, drawings with letters
/// among them: afterwards no file can be opened.
void loadLibraries() {
    using namespace std::string_view_literals;
    constexpr std::array beginnings{"GIF89a"sv, "\0\0\1\0"sv, "BM"sv, "\xFF\xD8\xFF"sv};
    static_cast<void>(decodedPicture(encodedPng({1, 1, {0, 0, 0, 0}})));
    for (const auto& each : beginnings) static_cast<void>(decodedPicture(each));
    // Other families are drawn in one of these. The drawing library keeps no more than ten fonts
    // open, and one that it had to close is lost.
    std::string letters;
    for (const auto* family : {"font-family='sans-serif'", "font-family='Arial'", ""}) {
        for (const auto* weight : {"bold", "normal"}) {
            letters += "<text y='9' font-weight='" + std::string{weight} + "' " + family +
                       ">a\u00E9\U0001F600</text>";
        }
    }
    draw(letters + "<text y='9' font-family='monospace'>a</text>");
}

/// Filters are drawn by a thread that stays.
void startThreads() {
    draw(
        "<filter id='f'><feGaussianBlur stdDeviation='1'/></filter>"
        "<rect filter='url(#f)' width='8' height='8'/>");
}

/// What this process is asked for, by its arguments.
struct Arguments {
    std::vector<std::string_view> words;

    [[nodiscard]] bool have(std::string_view word) const {
        return std::ranges::find(words, word) != words.end();
    }
};

/// False where the least that must hold can't be had: the filter of calls.
bool confine(bool namespaces, bool files, bool calls) {
    if (namespaces && leaveNamespaces()) limitThreads();
    setenv("RAYON_NUM_THREADS", "1", 1);
    loadLibraries();
    if (files) static_cast<void>(giveUpFiles());
    startThreads();
    clearenv();
    return !calls || giveUpCalls();
}

}  // namespace

/// Without arguments: decodes, within namespaces that others made.
///   --own-namespaces   makes them itself
///   --probe [namespaces] [files] [calls]
///                      gives up what is named, and says what it still could do
int main(int argc, char** argv) {
    const Arguments arguments{{argv + std::min(argc, 1), argv + argc}};
    const bool probes = arguments.have("--probe");
    const auto gives = [&](std::string_view layer) { return !probes || arguments.have(layer); };
    limitResources({.memory = 512UL << 20, .seconds = 20});  // libraries take 100 MB
    close_range(STDERR_FILENO + 1, ~0U, 0);
    mallopt(M_ARENA_MAX, 1);  // each would take 64 MB of addresses
    const bool own = arguments.have("--own-namespaces");
    if (!own && !probes) limitThreads();
    if (!confine(own || (probes && gives("namespaces")), gives("files"), gives("calls"))) {
        return EXIT_FAILURE;
    }
    if (!probes) return serve();
    return writeWhole(probeConfinement()) ? EXIT_SUCCESS : EXIT_FAILURE;
}
