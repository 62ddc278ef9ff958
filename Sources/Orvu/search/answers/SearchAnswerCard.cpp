#include "search/answers/SearchAnswerCard.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace orvu {
namespace {

using Kind = SearchAnswer::Phase::Kind;

std::optional<long long> decimalInteger(std::string_view text) {
    const bool hasPlus = text.starts_with('+');
    const auto digits = text.substr(hasPlus ? 1 : 0);
    if (hasPlus && digits.starts_with('-')) return std::nullopt;
    long long number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    if (error != std::errc{} || end != digits.end()) return std::nullopt;
    return number;
}

std::string_view withoutSpaces(std::string_view text) {
    const auto begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// The address that tells whose page a source is.
const Url& addressOf(const SearchAnswer::Source& source) {
    const bool hasHost = source.shown && source.shown->host();
    return hasHost ? *source.shown : source.url;
}

}  // namespace

bool SearchAnswerCard::isThinking(const SearchAnswer::Phase& phase) {
    return phase.kind == Kind::reading || phase.kind == Kind::thinking;
}

std::string SearchAnswerCard::status(const SearchAnswer::Phase& phase, std::size_t sources) {
    const auto read = std::min(sources, SearchAnswer::handedLimit);
    switch (phase.kind) {
        case Kind::reading:
            return phrase("Reading the top results…");
        case Kind::thinking:
            return trn("Read {1} results · on this Mac", "Read {1} results · on this Mac", read);
        case Kind::done:
            return trn("From {1} results · on this Mac", "From {1} results · on this Mac", read);
        case Kind::unavailable:
        case Kind::failed:
            break;
    }
    return phrase("Top results");
}

std::vector<SearchAnswerCard::Run> SearchAnswerCard::cited(std::string_view answer) {
    std::vector<Run> runs;
    while (true) {
        const auto open = answer.find('[');
        if (open == std::string_view::npos) break;
        const auto close = answer.find(']', open);
        if (close == std::string_view::npos) break;
        const auto number = decimalInteger(answer.substr(open + 1, close - open - 1));
        if (!number) break;
        const auto before = withoutSpaces(answer.substr(0, open));
        if (!before.empty()) runs.push_back({std::string{before}});
        runs.push_back({" " + std::to_string(*number), true});
        answer.remove_prefix(close + 1);
    }
    if (!answer.empty()) runs.push_back({std::string{answer}});
    return runs;
}

std::span<const SearchAnswer::Source> SearchAnswerCard::listed(const SearchAnswer& answer) {
    if (!answer.sourcesAreCurrent()) return {};
    const std::span all{answer.sources()};
    return all.first(std::min(all.size(), sourcesLimit));
}

std::string SearchAnswerCard::host(const SearchAnswer::Source& source) {
    return addressOf(source).host().value_or("");
}

std::string SearchAnswerCard::site(const SearchAnswer::Source& source) {
    return siteName(addressOf(source));
}

double SearchAnswerCard::shimmer(double time) {
    constexpr double least = 0.08;
    constexpr double more = 0.06;
    return (std::sin(3 * time) / 2 + 0.5) * more + least;
}

std::string SearchAnswerCard::accessibleName(const SearchAnswer::Source& source) {
    return std::to_string(source.id) + ": " + source.title + ", " + site(source);
}

}  // namespace orvu
