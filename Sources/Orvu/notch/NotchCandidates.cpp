#include "notch/NotchCandidates.h"

#include "foundation/Text.h"
#include "notch/AddressNotch.h"
#include "notch/NotchSnapshot.h"

#include <algorithm>
#include <array>
#include <map>
#include <ranges>

namespace orvu {
namespace {

constexpr std::size_t tabsShown = 2;
constexpr std::size_t bookmarksShown = 2;
constexpr std::size_t visitsShown = 3;

std::string_view blankless(std::string_view text) { return trimmed(text, TrimSet::whitespaces); }

bool sameCharacters(std::string_view a, std::string_view b) { return composed(a) == composed(b); }

std::string hostOf(const Url& url) { return url.host().value_or(""); }

std::string inQuotes(std::string_view text) { return std::string{"“"}.append(text).append("”"); }

}  // namespace

NotchCandidates::NotchCandidates(const NotchSnapshot& snapshot, const NotchQuestion& question)
    : bang_(Bang::parse(question.query)),
      searched_(bang_ ? bang_->query : std::string{blankless(question.query)}),
      lower_(lowercased(searched_)),
      prefix_(bang_ ? std::string{bang_->bang.key} + " " : "") {
    findTopHit(snapshot, question);
    findRecentSearches(snapshot);
    complete(question);
    listSearches(question);
    if (!bang_ && !lower_.empty()) {
        listTabs(snapshot);
        listBookmarks(snapshot);
        listHistory(snapshot, question);
    } else if (!bang_) {
        listToday(snapshot, question);
    }
    decidePrimaryRow(question);
    makeFooter(question);
}

std::string NotchCandidates::queryWithCorrection(std::string_view correction) const {
    return prefix_ + std::string{correction};
}

void NotchCandidates::findTopHit(const NotchSnapshot& snapshot, const NotchQuestion& question) {
    const std::string typed = lowercased(blankless(question.query));
    if (bang_ || characterCount(typed) < 2 || typed.contains(' ') || typed.contains('/')) return;
    std::vector<std::string> order;
    std::map<std::string, std::size_t> counts;
    const auto count = [&](const std::optional<Url>& url) {
        std::string host = url ? lowercased(hostOf(*url)) : "";
        if (host.starts_with("www.")) host.erase(0, 4);
        if (!host.starts_with(typed) || host == typed) return;
        if (++counts[host] == 1) order.push_back(host);
    };
    for (const auto& visit : snapshot.visits()) count(visit.url);
    for (const auto& bookmark : snapshot.bookmarks()) count(bookmark.url);
    for (const auto& tab : snapshot.tabs()) count(tab.url);
    for (const auto& host : order) {
        const bool better =
            !topHit_ || counts[host] > counts[*topHit_] ||
            (counts[host] == counts[*topHit_] && characterCount(host) < characterCount(*topHit_));
        if (better) topHit_ = host;
    }
}

void NotchCandidates::findRecentSearches(const NotchSnapshot& snapshot) {
    const std::size_t limit = lower_.empty() ? 3 : 2;
    std::vector<std::string> seen;
    for (const auto& visit : snapshot.visits() | std::views::reverse) {
        if (recent_.size() == limit) return;
        const auto page = Prefs::searchQuery(visit.url);
        if (!page) continue;
        const std::string key = composed(lowercased(page->query));
        if (!beginsWithCharacters(key, lower_) || sameCharacters(key, lower_)) continue;
        if (std::ranges::find(seen, key) != seen.end()) continue;
        seen.push_back(key);
        recent_.push_back(page->query);
    }
}

void NotchCandidates::complete(const NotchQuestion& question) {
    const std::string& query = question.query;
    if (bang_ || blankless(query).empty() || query.ends_with(' ')) return;
    const std::string typed = lowercased(query);
    std::vector<std::string> texts;
    if (topHit_) texts.push_back(*topHit_);
    texts.insert(texts.end(), recent_.begin(), recent_.end());
    texts.insert(texts.end(), question.predictions.begin(), question.predictions.end());
    for (const auto& text : texts) {
        if (!beginsWithCharacters(lowercased(text), typed)) continue;
        if (characterCount(text) <= characterCount(typed)) continue;
        ghost_ = text.substr(firstCharacters(text, characterCount(query)).size());
        return;
    }
}

void NotchCandidates::listSearches(const NotchQuestion& question) {
    const auto append = [&](const std::string& text, NotchEntry::Sign sign) {
        const bool begins = !lower_.empty() && beginsWithCharacters(lowercased(text), lower_);
        const auto typed = firstCharacters(text, begins ? characterCount(lower_) : 0);
        const bool recent = sign == NotchEntry::Sign::recent;
        entries_.push_back({(recent ? "r" : "p") + text, "Searches", sign, std::string{typed},
                            text.substr(typed.size()), "", recent ? "Searched before" : "",
                            SearchFor{prefix_ + text}});
    };
    for (const auto& text : recent_) append(text, NotchEntry::Sign::recent);
    if (searched_.empty()) return;
    std::size_t left = recent_.size() >= 5 ? 2 : 6 - recent_.size();
    for (const auto& text : question.predictions) {
        if (left == 0) return;
        const bool known = std::ranges::any_of(recent_, [&](const std::string& recent) {
            return sameCharacters(lowercased(recent), lowercased(text));
        });
        if (known) continue;
        append(text, NotchEntry::Sign::search);
        --left;
    }
}

void NotchCandidates::listTabs(const NotchSnapshot& snapshot) {
    std::size_t left = tabsShown;
    for (const auto& tab : snapshot.tabs()) {
        if (left == 0) return;
        if (tab.id == snapshot.currentTab()) continue;
        const std::string site = tab.url ? siteName(*tab.url) : "";
        if (!containsCharacters(lowercased(tab.title), lower_) && !site.contains(lower_)) continue;
        entries_.push_back({"t" + tab.id.string(), "Open tabs", NotchEntry::SiteIcon{site}, "",
                            tab.title, site, "Switch to tab", SwitchToTab{tab.id}});
        --left;
    }
}

void NotchCandidates::listBookmarks(const NotchSnapshot& snapshot) {
    std::size_t left = bookmarksShown;
    for (const auto& bookmark : snapshot.bookmarks()) {
        if (left == 0) return;
        if (!containsCharacters(lowercased(bookmark.title), lower_) &&
            !lowercased(bookmark.url.absoluteString()).contains(lower_)) {
            continue;
        }
        const std::string host = hostOf(bookmark.url);
        entries_.push_back({"b" + bookmark.id.string(), "Bookmarks", NotchEntry::SiteIcon{host}, "",
                            bookmark.title, host, "Bookmark", LoadAddress{bookmark.url}});
        --left;
    }
}

void NotchCandidates::listHistory(const NotchSnapshot& snapshot, const NotchQuestion& question) {
    std::vector<Url> shown;
    for (const auto& visit : snapshot.visits() | std::views::reverse) {
        if (shown.size() == visitsShown) return;
        if (Prefs::searchQuery(visit.url)) continue;
        if (!containsCharacters(lowercased(visit.title), lower_) &&
            !lowercased(visit.url.absoluteString()).contains(lower_)) {
            continue;
        }
        if (std::ranges::find(shown, visit.url) != shown.end()) continue;
        shown.push_back(visit.url);
        const std::string host = hostOf(visit.url);
        entries_.push_back({"h" + visit.id.string(), "History", NotchEntry::SiteIcon{host}, "",
                            visit.title, host, question.shortTime(visit.date),
                            LoadAddress{visit.url}});
    }
}

void NotchCandidates::listToday(const NotchSnapshot& snapshot, const NotchQuestion& question) {
    for (const auto& visit : snapshot.latestOfToday()) {
        const std::string host = hostOf(visit.url);
        entries_.push_back({"h" + visit.id.string(), "Earlier today", NotchEntry::SiteIcon{host},
                            "", visit.title, host, question.shortTime(visit.date),
                            LoadAddress{visit.url}});
    }
}

void NotchCandidates::decidePrimaryRow(const NotchQuestion& question) {
    const std::string typed{blankless(question.query)};
    askTitle_ = "Ask Kesto " + inQuotes(typed);
    const auto& engine = Prefs::facts(question.engine);
    const auto address = topHit_ ? Url::parse("https://" + *topHit_) : std::nullopt;
    primaryAction_ = SearchFor{question.query};
    if (address) primaryAction_ = LoadAddress{*address};
    if (topHit_) {
        primaryTitle_ = "Go to " + *topHit_;
        primarySubtitle_ = "You've been here before";
        primaryHost_ = *topHit_;
    } else if (bang_) {
        primaryTitle_ =
            std::string{"Search "}.append(bang_->bang.name) + " for " + inQuotes(bang_->query);
        primarySubtitle_ = bang_->bang.host;
        primaryHost_ = bang_->bang.host;
    } else if (AddressNotch::looksLikeSite(question.query)) {
        primaryTitle_ = "Go to " + typed;
        primarySubtitle_ = "Open the site";
    } else {
        primaryTitle_ = "Search " + inQuotes(typed);
        primarySubtitle_ = std::string{engine.shownName} + " Search";
        primaryHost_ = engine.site;
    }
}

void NotchCandidates::makeFooter(const NotchQuestion& question) {
    const std::string typed{blankless(question.query)};
    if (typed.empty() || bang_ || question.isPrivate) return;
    if (AddressNotch::looksLikeSite(question.query)) return;
    footer_.emplace();
    for (const std::string_view key : {"!w", "!yt", "!m", "!gh"}) {
        const auto bang = std::ranges::find(Bang::all, key, &Bang::key);
        if (bang == Bang::all.end()) continue;
        footer_->chips.push_back(
            {*bang,
             std::string{"Search "}.append(bang->name) + " (type " + std::string{key} + " first)",
             SearchFor{std::string{key} + " " + typed}});
    }
    footer_->note = question.suggestionsOn
                        ? "Suggestions from " + std::string{Prefs::facts(question.engine).shownName}
                        : "Suggestions are off";
}

}  // namespace orvu
