#include "FullProfile.h"

#include "foundation/text/Text.h"

#include <array>
#include <chrono>
#include <string_view>

namespace orvu {
namespace {

constexpr std::array<std::string_view, 24> words{
    "garden", "archive", "weather", "music",   "library", "history", "forum",  "market",
    "travel", "science", "recipes", "journal", "photos",  "guide",   "review", "news",
    "maps",   "letters", "museum",  "index",   "sources", "notes",   "today",  "community"};
constexpr std::array<std::string_view, 8> foreignWords{"Gärten",  "日本語", "история", "café",
                                                       "Öffnung", "東京",   "книга",   "naïve"};

}  // namespace

Url FullProfile::url() {
    const std::size_t length = 40 + below(81);
    const bool foreign = below(10) == 0;
    std::string text = "https://www." + std::string{words.at(below(words.size()))} +
                       std::to_string(below(300)) + ".example/";
    while (text.size() + 12 < length) {
        if (foreign) text.append(foreignWords.at(below(foreignWords.size())));
        text.append(words.at(below(words.size()))).append(1, below(3) == 0 ? '/' : '-');
    }
    return *Url::parse(text.append("?id=" + std::to_string(random_())));
}

std::string FullProfile::title() {
    const std::size_t length = 20 + below(61);
    const bool foreign = below(10) == 0;
    std::string text;
    while (text.size() < length) {
        text.append(foreign ? foreignWords.at(below(foreignWords.size()))
                            : words.at(below(words.size())));
        text.append(1, ' ');
    }
    return std::string{firstCharacters(text, length)};
}

std::vector<Visit> FullProfile::visits(std::size_t count) {
    using Days = std::chrono::duration<double, std::chrono::days::period>;
    std::vector<Visit> result;
    result.reserve(count);
    for (std::size_t index = 1; index <= count; ++index) {
        const double part = static_cast<double>(count - index) / static_cast<double>(count);
        result.push_back({Uuid::random(), url(), title(), now_.after(Days{-29 * part})});
    }
    return result;
}

void FullProfile::store(UserDefaults& defaults) {
    std::vector<BookmarkStore::Bookmark> bookmarks;
    for (std::size_t count = 0; count < bookmarkCount; ++count) {
        bookmarks.push_back({Uuid::random(), url(), title(), now_});
    }
    std::vector<SavedTab> session;
    for (std::size_t count = 0; count < tabCount; ++count) {
        session.push_back({url(), count < 8, std::nullopt});
    }
    defaults.setData("browserVisits", encodeRecords(visits()).value());
    defaults.setData("orvuBookmarks", encodeRecords(bookmarks).value());
    defaults.setData("browserSession", encodeRecords(session).value());
}

}  // namespace orvu
