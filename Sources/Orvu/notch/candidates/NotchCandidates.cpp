#include "notch/candidates/NotchCandidates.h"

#include "foundation/text/FoldedText.h"
#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "notch/candidates/NotchSnapshot.h"
#include "search/SiteText.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace orvu {
namespace {

constexpr std::size_t pastSearchesShown = 2;
constexpr std::size_t pastSearchesInEmptyField = 3;
constexpr std::size_t searchesShown = 6;
constexpr std::size_t minPredictions = 2;
constexpr std::size_t tabsShown = 2;
constexpr std::size_t bookmarksShown = 2;
constexpr std::size_t visitsShown = 3;

std::string hostOf(const Url& url) { return url.host().value_or(""); }

/// The pieces one behind the other, in one allocation: one of them may be a book.
std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string result;
    std::size_t size = 0;
    for (const auto piece : pieces) size += piece.size();
    result.reserve(size);
    for (const auto piece : pieces) result += piece;
    return result;
}

/// What a person typed, in the forms in which it is compared.
struct Folded {
    std::string lower;
    FoldedText text;

    /// Prepares `typed` for texts of at most `longest` bytes.
    Folded(std::string_view typed, std::size_t longest) {
        if (typed.size() / FoldedText::minPart > longest) {
            // To fold a book takes long. However it is spelt, it is too long to be found, and so
            // is what stands for it here.
            lower.assign(longest + 1, '.');
        } else {
            lower = lowercased(typed);
        }
        text = FoldedText::fromLowercased(lower);
    }
};

}  // namespace

/// What is given, and what several of the results need of it.
struct NotchCandidates::Given {
    const NotchSnapshot& snapshot;
    const NotchQuestion& question;
    std::string_view typed;  ///< the query, trimmed
    std::vector<PastSearches::Search> recent;
    std::vector<PastSearches::Search> predictions;
    std::size_t longest;  ///< of what the query is compared with, in bytes
    Folded searched;      ///< the text behind the bang, or all

    Given(const NotchSnapshot& from, const NotchQuestion& asked, std::string_view trimmedQuery,
          const std::optional<Bang::Parsed>& bang)
        : snapshot(from),
          question(asked),
          typed(trimmedQuery),
          predictions(foldedPredictions()),
          longest(maxTextBytes()),
          searched(bang ? std::string_view{bang->query} : typed, longest) {
        const auto limit = isBlank() ? pastSearchesInEmptyField : pastSearchesShown;
        recent = snapshot.pastSearches().latest(searched.text, limit);
    }

    [[nodiscard]] bool isBlank() const { return searched.lower.empty(); }
    [[nodiscard]] TitledRows::Query rowQuery() const { return {searched.text, searched.lower}; }

private:
    [[nodiscard]] std::vector<PastSearches::Search> foldedPredictions() const {
        std::vector<PastSearches::Search> result;
        result.reserve(question.predictions.size());
        for (const auto& text : question.predictions) result.push_back({text, FoldedText{text}});
        return result;
    }
    [[nodiscard]] std::size_t maxTextBytes() const {
        std::size_t result = snapshot.maxTextBytes();
        for (const auto& each : predictions) result = std::max(result, each.folded.text().size());
        return result;
    }
};

SearchFor NotchFooter::Chip::action(std::string_view query) const {
    return {joined({bang.key, " ", trimmed(query, TrimSet::whitespaces)})};
}

NotchCandidates::NotchCandidates(const NotchSnapshot& snapshot, const NotchQuestion& question) {
    const auto typed = trimmed(question.query, TrimSet::whitespaces);
    bang_ = Bang::parse(typed);
    if (bang_) prefix_ = std::string{bang_->bang.key} + " ";
    const Given given{snapshot, question, typed, bang_};
    for (const auto& search : given.recent) recent_.push_back(search.text);

    findTopHit(given);
    complete(given);
    listSearches(given);
    if (!bang_ && !given.isBlank()) {
        listTabs(given);
        listBookmarks(given);
        listHistory(given);
    } else if (!bang_) {
        listToday(given);
    }
    decidePrimaryRow(given);
    makeFooter(given);
}

std::string NotchCandidates::queryWithCorrection(std::string_view correction) const {
    return prefix_ + std::string{correction};
}

void NotchCandidates::findTopHit(const Given& given) {
    if (bang_ || given.typed.contains(' ') || given.typed.contains('/')) return;
    const std::string& lower = given.searched.lower;
    if (lower.size() < 2) return;
    topHit_ = given.snapshot.topHits().best(lower);
    // Last, since a text of any length may be one character. What begins a host is short.
    if (topHit_ && characterCount(lower) < 2) topHit_.reset();
}

void NotchCandidates::complete(const Given& given) {
    const std::string& query = given.question.query;
    if (bang_ || given.typed.empty() || query.ends_with(' ')) return;
    std::optional<Folded> untrimmed;
    if (query.size() != given.typed.size()) untrimmed.emplace(query, given.longest);
    const Folded& typed = untrimmed ? *untrimmed : given.searched;
    const auto completes = [&](const std::string& text, const FoldedText& folded) {
        if (!folded.beginsWith(typed.text)) return false;
        if (characterCount(text) <= characterCount(typed.lower)) return false;
        ghost_ = text.substr(firstCharacters(text, characterCount(query)).size());
        return true;
    };
    if (topHit_ && completes(*topHit_, FoldedText::fromLowercased(*topHit_))) return;
    for (const auto& [text, folded] : given.recent) {
        if (completes(text, folded)) return;
    }
    for (const auto& [text, folded] : given.predictions) {
        if (completes(text, folded)) return;
    }
}

void NotchCandidates::listSearches(const Given& given) {
    const auto append = [&](const PastSearches::Search& search, NotchEntry::Sign sign) {
        const auto& [text, folded] = search;
        const bool begins = !given.isBlank() && folded.beginsWith(given.searched.text);
        const auto typed = firstCharacters(text, begins ? characterCount(given.searched.lower) : 0);
        const bool isRecent = sign == NotchEntry::Sign::recent;
        entries_.push_back({(isRecent ? "r" : "p") + text, phrase("Searches"), sign,
                            std::string{typed}, text.substr(typed.size()), "",
                            isRecent ? phrase("Searched before") : Phrase{},
                            SearchFor{prefix_ + text}});
    };
    for (const auto& search : given.recent) append(search, NotchEntry::Sign::recent);
    if (given.isBlank()) return;
    std::size_t left = searchesShown - std::min(searchesShown, given.recent.size());
    left = std::max(left, minPredictions);
    for (const auto& prediction : given.predictions) {
        if (left == 0) return;
        const bool isRecent =
            std::ranges::find(given.recent, prediction.folded, &PastSearches::Search::folded) !=
            given.recent.end();
        if (isRecent) continue;
        append(prediction, NotchEntry::Sign::search);
        --left;
    }
}

void NotchCandidates::listTabs(const Given& given) {
    const auto& snapshot = given.snapshot;
    std::size_t left = tabsShown;
    snapshot.tabRows().search(given.rowQuery(), TitledRows::Order::forward, [&](std::size_t row) {
        const auto& [id, title, url] = snapshot.tabs().at(row);
        if (id == snapshot.currentTab()) return true;
        const std::string site = url ? siteName(*url) : "";
        entries_.push_back({"t" + id.string(), phrase("Open tabs"), NotchEntry::SiteIcon{site}, "",
                            title, site, phrase("Switch to tab"), SwitchToTab{id}});
        return --left > 0;
    });
}

void NotchCandidates::listBookmarks(const Given& given) {
    std::size_t left = bookmarksShown;
    const auto append = [&](std::size_t row) {
        const auto& [id, url, title, date] = given.snapshot.bookmarks().at(row);
        const std::string host = hostOf(url);
        entries_.push_back({"b" + id.string(), phrase("Bookmarks"), NotchEntry::SiteIcon{host}, "",
                            title, host, phrase("Bookmark"), LoadAddress{url}});
        return --left > 0;
    };
    given.snapshot.bookmarkRows().search(given.rowQuery(), TitledRows::Order::forward, append);
}

void NotchCandidates::listHistory(const Given& given) {
    std::vector<const Visit*> shown;
    const auto append = [&](std::size_t row) {
        const Visit& visit = given.snapshot.visits().at(row);
        if (std::ranges::find(shown, visit.url, &Visit::url) != shown.end()) return true;
        shown.push_back(&visit);
        listVisit(visit, phrase("History"), given.question);
        return shown.size() < visitsShown;
    };
    given.snapshot.visitRows().search(given.rowQuery(), TitledRows::Order::backward, append);
}

void NotchCandidates::listToday(const Given& given) {
    for (const auto& visit : given.snapshot.latestOfToday()) {
        listVisit(visit, phrase("Earlier today"), given.question);
    }
}

void NotchCandidates::listVisit(const Visit& visit, std::string_view section,
                                const NotchQuestion& question) {
    const std::string host = hostOf(visit.url);
    entries_.push_back({"h" + visit.id.string(), std::string{section}, NotchEntry::SiteIcon{host},
                        "", visit.title, host, question.shortTime(visit.date),
                        LoadAddress{visit.url}});
}

void NotchCandidates::decidePrimaryRow(const Given& given) {
    const std::string_view typed = given.typed;
    askTitle_ = tr("Ask Kesto “{1}”", typed);
    const auto address = topHit_ ? Url::parse("https://" + *topHit_) : std::nullopt;
    if (address) {
        primaryAction_ = LoadAddress{*address};
    } else {
        primaryAction_ = SearchFor{given.question.query};
    }
    if (topHit_) {
        primaryTitle_ = tr("Go to {1}", *topHit_);
        primarySubtitle_ = phrase("You've been here before");
        primaryHost_ = *topHit_;
    } else if (bang_) {
        const auto& [bang, query] = *bang_;
        primaryTitle_ = tr("Search {1} for “{2}”", bang.name, query);
        primarySubtitle_ = bang.host;
        primaryHost_ = bang.host;
    } else if (looksLikeSite(typed)) {
        primaryTitle_ = tr("Go to {1}", typed);
        primarySubtitle_ = phrase("Open the site");
    } else {
        const auto& engine = Prefs::facts(given.question.engine);
        primaryTitle_ = tr("Search “{1}”", typed);
        primarySubtitle_ = tr("{1} Search", engine.shownName);
        primaryHost_ = engine.site;
    }
}

void NotchCandidates::makeFooter(const Given& given) {
    const NotchQuestion& question = given.question;
    const std::string_view typed = given.typed;
    if (typed.empty() || bang_ || question.isPrivate || looksLikeSite(typed)) return;
    NotchFooter footer;
    for (const std::string_view key : {"!w", "!yt", "!m", "!gh"}) {
        const auto bang = std::ranges::find(Bang::all, key, &Bang::key);
        if (bang == Bang::all.end()) continue;
        footer.chips.push_back({*bang, tr("Search {1} (type {2} first)", bang->name, key)});
    }
    const auto engine = Prefs::facts(question.engine).shownName;
    footer.note = question.suggestionsOn ? tr("Suggestions from {1}", engine)
                                         : std::string{phrase("Suggestions are off")};
    footer_ = std::move(footer);
}

}  // namespace orvu
