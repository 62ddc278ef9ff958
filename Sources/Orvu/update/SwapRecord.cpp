#include "update/SwapRecord.h"

#include "update/PlainPath.h"

#include <algorithm>
#include <array>

namespace orvu {
namespace {

constexpr std::size_t fields = 6;

std::array<std::string_view, fields> words(std::string_view line) {
    std::array<std::string_view, fields> result;
    for (std::string_view& word : result) {
        const auto end = std::min(line.find(' '), line.size());
        word = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return result;
}

}  // namespace

std::optional<SwapRecord> SwapRecord::parse(std::string_view text) {
    if (!text.ends_with('\n')) return std::nullopt;
    const auto word = words(text.substr(0, text.size() - 1));
    const auto phase = plainNumber(word[1]);
    const auto starts = plainNumber(word[4]);
    if (phase < 0 || phase > static_cast<int>(Phase::takingBack)) return std::nullopt;
    if (starts < 0 || starts > mostStarts) return std::nullopt;
    const SwapRecord record{.phase = static_cast<Phase>(phase),
                            .from = plainNumber(word[2]),
                            .to = plainNumber(word[3]),
                            .starts = static_cast<int>(starts),
                            .takenBack = plainNumber(word[5])};
    return record.string() == text ? std::optional{record} : std::nullopt;
}

std::string SwapRecord::string() const {
    return "orvu-swap-1 " + std::to_string(static_cast<int>(phase)) + ' ' + std::to_string(from) +
           ' ' + std::to_string(to) + ' ' + std::to_string(starts) + ' ' +
           std::to_string(takenBack) + '\n';
}

}  // namespace orvu
