#include "search/SearchSuggester.h"

#include "foundation/json/Json.h"
#include "foundation/text/FoldedText.h"
#include "foundation/text/Latin1.h"
#include "foundation/text/Text.h"
#include "search/Bang.h"
#include "search/EditDistance.h"
#include "search/SuggestionGate.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace orvu {
namespace {

/// The words of `text`, of which only spaces are between.
std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const auto word = text.substr(0, text.find(' '));
        if (!word.empty()) result.push_back(word);
        text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return result;
}

/// The first `count` words of `text`, with one space between each two.
std::string firstWords(std::string_view text, std::size_t count) {
    std::string result;
    auto kept = words(text);
    kept.resize(std::min(kept.size(), count));
    for (const auto word : kept) {
        if (!result.empty()) result += ' ';
        result += word;
    }
    return result;
}

/// What a request tells beside its address.
HttpSession::Headers headersFor(const std::vector<std::string>& preferredLanguages) {
    std::string languages;
    const auto count = std::min(preferredLanguages.size(), SearchSuggester::maxLanguages);
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) languages += ',';
        languages += preferredLanguages[i];
    }
    if (languages.empty()) return {};
    return {{"Accept-Language", std::move(languages)}};
}

}  // namespace

SearchSuggester::SearchSuggester(HttpSession& http, MainLoop& loop, const Settings& settings,
                                 const std::vector<std::string>& preferredLanguages,
                                 AddressOf addressOf)
    : http_(http),
      loop_(loop),
      settings_(settings),
      headers_(headersFor(preferredLanguages)),
      addressOf_(std::move(addressOf)) {}

void SearchSuggester::update(std::string_view query, Privacy privacy) {
    tasks_.cancel();
    const auto bang = Bang::parse(query);
    std::string text{trimmed(bang ? bang->query : query, TrimSet::whitespaces)};
    if (privacy == Privacy::privateWindow || !settings_.searchSuggestions.get() ||
        !SuggestionGate::allows(text)) {
        return show({}, std::move(text));
    }
    std::string key = FoldedText{text}.text();
    if (const auto known = cache_.find(key); known != cache_.end()) {
        return show(known->second, std::move(text));
    }
    const auto engine = bang ? Prefs::Engine::google : settings_.searchEngine.get();
    tasks_.start(ask(std::move(text), std::move(key), engine));
}

Task<void> SearchSuggester::ask(std::string query, std::string key, Prefs::Engine engine) {
    co_await Sleep{loop_, debounce};
    const auto url = addressOf_(engine, query);
    if (!url) co_return;
    const auto response = co_await http_.get(*url, headers_);
    if (!response) co_return;

    auto found = parse(response->body);
    std::erase_if(found, [&](const std::string& each) { return FoldedText{each}.text() == key; });
    cache_.insert_or_assign(std::move(key), found);
    show(std::move(found), std::move(query));  // last: who hears of it may end the suggester
}

void SearchSuggester::show(std::vector<std::string> predictions, std::string query) {
    if (predictions == predictions_ && query == forQuery_) return;
    predictions_ = std::move(predictions);
    forQuery_ = std::move(query);
    changed_.emit();  // last: an observer may call straight back, or end the suggester
}

std::optional<std::string> SearchSuggester::correction(std::string_view query) const {
    const std::string typed = lowercased(trimmed(query, TrimSet::whitespaces));
    if (predictions_.empty() || FoldedText{forQuery_} != FoldedText::fromLowercased(typed)) {
        return std::nullopt;
    }
    const std::size_t length = characterCount(typed);
    if (length < 4) return std::nullopt;
    const auto completes = [&](const std::string& each) {
        return beginsWithCharacters(lowercased(each), typed);
    };
    if (std::ranges::any_of(predictions_, completes)) return std::nullopt;

    const std::size_t maxEdits = length / 4;
    std::string candidate = firstWords(lowercased(predictions_[0]), words(typed).size());
    // Each character too many is an edit, so what is far too long need not be compared.
    if (firstCharacters(candidate, length + maxEdits).size() < candidate.size()) {
        return std::nullopt;
    }
    const std::size_t edits = distance(typed, candidate);
    if (edits < 1 || edits > maxEdits) return std::nullopt;
    return candidate;
}

std::vector<std::string> SearchSuggester::parse(std::string_view answer) {
    auto document = JsonDocument::parse(answer);
    if (!document && !isWellFormed(answer)) document = JsonDocument::parse(fromLatin1(answer));
    if (!document) return {};
    const auto parts = document->root().array();
    if (!parts || parts->size() < 2) return {};
    const auto offered = (*parts)[1].texts();
    if (!offered) return {};

    std::vector<std::string> result;
    std::unordered_set<std::string> seen;
    for (const auto each : *offered) {
        if (result.size() == maxPredictions) break;
        const auto text = trimmed(each, TrimSet::whitespaces);
        if (text.empty() || !seen.insert(FoldedText{text}.text()).second) continue;
        result.emplace_back(text);
    }
    return result;
}

std::size_t SearchSuggester::distance(std::string_view a, std::string_view b) {
    return editDistance(a, b);
}

}  // namespace orvu
