#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"
#include "foundation/text/Text.h"
#include "notch/AddressNotch.h"
#include "notch/candidates/NotchCandidates.h"
#include "notch/candidates/NotchSnapshot.h"

#include <algorithm>
#include <map>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What a notch knows, as plain lists.
struct PlainProfile {
    std::vector<Visit> visits;  ///< oldest first
    std::vector<Visit> today;   ///< newest first
    std::vector<BookmarkStore::Bookmark> bookmarks;
    std::vector<NotchTab> tabs;
    std::optional<Uuid> current;
};

/// The candidates of the notch, computed by one plain loop after the other over plain lists. What
/// `NotchCandidates` finds in prepared texts is held against it.
class PlainCandidates {
public:
    PlainCandidates(const PlainProfile& profile, const NotchQuestion& question)
        : profile_(profile),
          question_(question),
          bang(Bang::parse(question.query)),
          q_(bang ? bang->query : blankless(question.query)),
          qLower_(lowercased(q_)),
          prefix_(bang ? std::string{bang->bang.key} + " " : "") {
        topHit = findTopHit();
        recentSearches = findRecentSearches();
        ghost = complete();
        listSearches();
        if (!bang && !qLower_.empty()) {
            listTabs();
            listBookmarks();
            listHistory();
        }
        if (!bang && qLower_.empty()) {
            for (const auto& visit : profile_.today) listVisit(visit, "Earlier today");
        }
        decidePrimaryRow();
        makeFooter();
    }

private:
    const PlainProfile& profile_;
    const NotchQuestion& question_;

public:
    std::optional<Bang::Parsed> bang;
    std::optional<std::string> topHit;
    std::vector<std::string> recentSearches;
    std::string ghost;
    std::vector<NotchEntry> entries;
    std::string primaryTitle;
    std::string primarySubtitle;
    std::string primaryHost;
    NotchAction primaryAction;
    std::string askTitle;
    std::optional<NotchFooter> footer;

private:
    static std::string blankless(std::string_view text) {
        return std::string{trimmed(text, TrimSet::whitespaces)};
    }
    /// Whether two texts are the same in any letter case.
    static bool same(std::string_view a, std::string_view b) {
        return composed(lowercased(a)) == composed(lowercased(b));
    }
    static bool begins(std::string_view text, std::string_view lower) {
        return beginsWithCharacters(lowercased(text), lower);
    }
    static std::string hostOf(const Url& url) { return url.host().value_or(""); }

    std::optional<std::string> findTopHit() const {
        const std::string t = lowercased(blankless(question_.query));
        if (characterCount(t) < 2 || t.contains(' ') || t.contains('/') || bang) {
            return std::nullopt;
        }
        std::vector<std::optional<Url>> gathered;
        for (const auto& visit : profile_.visits) gathered.emplace_back(visit.url);
        for (const auto& bookmark : profile_.bookmarks) gathered.emplace_back(bookmark.url);
        for (const auto& tab : profile_.tabs) gathered.push_back(tab.url);
        std::vector<std::string> met;
        std::map<std::string, int> counts;
        for (const auto& url : gathered) {
            if (!url || !url->host()) continue;
            std::string host = lowercased(*url->host());
            if (host.starts_with("www.")) host = host.substr(4);
            if (!host.starts_with(t) || host == t) continue;
            if (counts[host]++ == 0) met.push_back(host);
        }
        std::optional<std::string> best;
        for (const auto& host : met) {
            const bool more = !best || counts[host] > counts[*best];
            const bool shorter = best && counts[host] == counts[*best] &&
                                 characterCount(host) < characterCount(*best);
            if (more || shorter) best = host;
        }
        return best;
    }

    std::vector<std::string> findRecentSearches() const {
        std::vector<std::string> result;
        for (const auto& visit : profile_.visits | std::views::reverse) {
            const auto page = Prefs::searchQuery(visit.url);
            if (!page) continue;
            const std::string& text = page->query;
            if (!qLower_.empty() && (!begins(text, qLower_) || same(text, qLower_))) continue;
            const auto isSame = [&](const std::string& seen) { return same(seen, text); };
            if (std::ranges::any_of(result, isSame)) continue;
            result.push_back(text);
        }
        result.resize(std::min<std::size_t>(result.size(), qLower_.empty() ? 3 : 2));
        return result;
    }

    std::string complete() const {
        const std::string& query = question_.query;
        if (blankless(query).empty() || query.ends_with(' ') || bang) return "";
        const std::string lower = lowercased(query);
        std::vector<std::string> candidates;
        if (topHit) candidates.push_back(*topHit);
        for (const auto& text : recentSearches) candidates.push_back(text);
        for (const auto& text : question_.predictions) candidates.push_back(text);
        for (const auto& text : candidates) {
            if (begins(text, lower) && characterCount(text) > characterCount(lower)) {
                return text.substr(firstCharacters(text, characterCount(query)).size());
            }
        }
        return "";
    }

    void listSearches() {
        for (const auto& text : recentSearches) listSearch(text, NotchEntry::Sign::recent);
        if (q_.empty()) return;
        std::vector<std::string> others;
        for (const auto& text : question_.predictions) {
            const auto isSame = [&](const std::string& recent) { return same(recent, text); };
            if (std::ranges::none_of(recentSearches, isSame)) others.push_back(text);
        }
        const std::size_t k = recentSearches.size() >= 5 ? 2 : 6 - recentSearches.size();
        others.resize(std::min(others.size(), k));
        for (const auto& text : others) listSearch(text, NotchEntry::Sign::search);
    }

    void listSearch(const std::string& text, NotchEntry::Sign sign) {
        NotchEntry entry{.id = (sign == NotchEntry::Sign::recent ? "r" : "p") + text,
                         .section = "Searches",
                         .icon = sign,
                         .typed = "",
                         .rest = text,
                         .detail = "",
                         .hint = sign == NotchEntry::Sign::recent ? "Searched before" : "",
                         .action = SearchFor{prefix_ + text}};
        if (!qLower_.empty() && begins(text, qLower_)) {
            entry.typed = firstCharacters(text, characterCount(qLower_));
            entry.rest = text.substr(entry.typed.size());
        }
        entries.push_back(entry);
    }

    void listTabs() {
        int shown = 0;
        for (const auto& tab : profile_.tabs) {
            if (tab.id == profile_.current) continue;
            const std::string host =
                tab.url ? replacingAll(tab.url->host().value_or(""), "www.", "") : "";
            if (!containsCharacters(lowercased(tab.title), qLower_) && !host.contains(qLower_)) {
                continue;
            }
            if (++shown > 2) return;
            entries.push_back({"t" + tab.id.string(), "Open tabs", NotchEntry::SiteIcon{host}, "",
                               tab.title, host, "Switch to tab", SwitchToTab{tab.id}});
        }
    }

    void listBookmarks() {
        int shown = 0;
        for (const auto& bookmark : profile_.bookmarks) {
            if (!containsCharacters(lowercased(bookmark.title), lowercased(q_)) &&
                !lowercased(bookmark.url.absoluteString()).contains(lowercased(q_))) {
                continue;
            }
            if (++shown > 2) return;
            const std::string host = hostOf(bookmark.url);
            entries.push_back({"b" + bookmark.id.string(), "Bookmarks", NotchEntry::SiteIcon{host},
                               "", bookmark.title, host, "Bookmark", LoadAddress{bookmark.url}});
        }
    }

    void listHistory() {
        std::vector<Url> kept;
        for (const auto& visit : profile_.visits | std::views::reverse) {
            if (Prefs::searchQuery(visit.url)) continue;
            if (!containsCharacters(lowercased(visit.title), qLower_) &&
                !lowercased(visit.url.absoluteString()).contains(qLower_)) {
                continue;
            }
            if (std::ranges::find(kept, visit.url) != kept.end()) continue;
            kept.push_back(visit.url);
            if (kept.size() > 3) return;
            listVisit(visit, "History");
        }
    }

    void listVisit(const Visit& visit, const std::string& section) {
        const std::string host = hostOf(visit.url);
        entries.push_back({"h" + visit.id.string(), section, NotchEntry::SiteIcon{host}, "",
                           visit.title, host, question_.shortTime(visit.date),
                           LoadAddress{visit.url}});
    }

    void decidePrimaryRow() {
        const std::string typed = blankless(question_.query);
        const bool site = AddressNotch::looksLikeSite(question_.query);
        const auto& engine = Prefs::facts(question_.engine);
        const auto named = bang ? std::string{bang->bang.name} : "";
        const auto bangHost = bang ? std::string{bang->bang.host} : "";
        primaryTitle = topHit ? "Go to " + *topHit
                       : site ? "Go to " + typed
                       : bang ? "Search " + named + " for “" + bang->query + "”"
                              : "Search “" + typed + "”";
        primarySubtitle = topHit ? "You've been here before"
                          : site ? "Open the site"
                          : bang ? bangHost
                                 : std::string{engine.shownName} + " Search";
        primaryHost = topHit ? *topHit : bang ? bangHost : site ? "" : std::string{engine.site};
        primaryAction = SearchFor{question_.query};
        if (const auto url = topHit ? Url::parse("https://" + *topHit) : std::nullopt) {
            primaryAction = LoadAddress{*url};
        }
        askTitle = "Ask Kesto “" + typed + "”";
    }

    void makeFooter() {
        const std::string typed = blankless(question_.query);
        const bool site = AddressNotch::looksLikeSite(question_.query);
        if (typed.empty() || bang || question_.isPrivate || site) return;
        footer = NotchFooter{{}, "Suggestions are off"};
        if (question_.suggestionsOn) {
            footer->note = "Suggestions from ";
            footer->note += Prefs::facts(question_.engine).shownName;
        }
        for (const std::string key : {"!w", "!yt", "!m", "!gh"}) {
            for (const auto& each : Bang::all) {
                if (each.key != key) continue;
                footer->chips.push_back(
                    {each, "Search " + std::string{each.name} + " (type " + key + " first)"});
            }
        }
    }

    std::string q_;
    std::string qLower_;
    std::string prefix_;
};

}  // namespace orvu
