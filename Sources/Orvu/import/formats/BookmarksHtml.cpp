#include "import/formats/BookmarksHtml.h"

#include "foundation/text/Text.h"
#include "import/formats/ImportedPage.h"

#include <algorithm>
#include <optional>
#include <ranges>

namespace orvu {
namespace {

char asciiLowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Whether `word`, which has small letters, stands at `at` in any case of letters.
bool standsAt(std::string_view text, std::size_t at, std::string_view word) {
    return at <= text.size() &&
           std::ranges::equal(text.substr(at, word.size()), word, {}, asciiLowered);
}

struct Link {
    std::string_view address;
    std::string_view text;
    std::size_t end = 0;  ///< behind the closing tag
};

/// Finds links one after the other, as
///
///     <A[^>]*HREF="([^"]+)"[^>]*>([^<]*)</A>
///
/// does in any case of letters, but without going back over what was read. Of several addresses in
/// one tag the last that fits counts.
class LinkFinder {
public:
    explicit LinkFinder(std::string_view html) : html_(html) {}

    [[nodiscard]] std::optional<Link> next() {
        while (beginTag()) {
            auto link = linkOfTag();
            at_ = link ? link->end : tagEnd_;
            if (link) return link;
        }
        return std::nullopt;
    }

private:
    /// Goes to the next tag that begins as a link does. False if none follows that ends.
    bool beginTag() {
        while (at_ < html_.size() && !standsAt(html_, at_, opening)) {
            at_ = std::min(html_.find('<', at_ + 1), html_.size());
        }
        if (at_ >= html_.size()) return false;
        at_ += opening.size();
        tagEnd_ = html_.find('>', at_);
        return tagEnd_ != std::string_view::npos;
    }

    [[nodiscard]] std::vector<std::size_t> addressesInTag() const {
        std::vector<std::size_t> result;
        for (std::size_t at = at_; at < tagEnd_; ++at) {
            if (standsAt(html_, at, attribute)) result.push_back(at + attribute.size());
        }
        return result;
    }

    [[nodiscard]] std::optional<Link> linkOfTag() const {
        for (const std::size_t begin : addressesInTag() | std::views::reverse) {
            const std::size_t end = html_.find('"', begin);
            if (end == std::string_view::npos || end == begin) continue;
            // An address may hold what otherwise ends a tag.
            const std::size_t close = end < tagEnd_ ? tagEnd_ : html_.find('>', end);
            if (auto link = linkWithText(html_.substr(begin, end - begin), close)) return link;
            // What stands in front of the address ends with the tag, so it has the same text.
            if (end < tagEnd_) break;
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<Link> linkWithText(std::string_view address,
                                                   std::size_t close) const {
        if (close == std::string_view::npos) return std::nullopt;
        const std::size_t begin = close + 1;
        const std::size_t end = html_.find('<', begin);
        if (end == std::string_view::npos || !standsAt(html_, end, closing)) return std::nullopt;
        return Link{address, html_.substr(begin, end - begin), end + closing.size()};
    }

    static constexpr std::string_view opening = "<a";
    static constexpr std::string_view attribute = "href=\"";
    static constexpr std::string_view closing = "</a>";

    std::string_view html_;
    std::size_t at_ = 0;
    std::size_t tagEnd_ = 0;
};

}  // namespace

std::vector<BookmarkStore::Entry> bookmarksInHtml(std::string_view html) {
    std::vector<BookmarkStore::Entry> found;
    if (!isWellFormed(html)) return found;
    LinkFinder links{html};
    while (const auto link = links.next()) {
        auto url = webBookmark(link->address);
        if (!url) continue;
        const std::string title = link->text.empty() ? std::string{link->address}
                                                     : replacingAll(link->text, "&amp;", "&");
        found.emplace_back(std::move(*url), importedTitle(title));
    }
    return found;
}

}  // namespace orvu
