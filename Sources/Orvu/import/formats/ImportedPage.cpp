#include "import/formats/ImportedPage.h"

#include "core/Records.h"
#include "foundation/text/Text.h"

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 1000;  // characters
/// No character of a title needs more; what claims to is a pile of marks on one letter.
constexpr std::size_t titleBytes = 16'000;

}  // namespace

std::optional<Url> web(std::string_view text) {
    auto url = Url::parse(text);
    return url && isWebUrl(*url) ? url : std::nullopt;
}

std::optional<Url> webBookmark(std::string_view text) {
    return text.size() <= storedAddressLimit ? web(text) : std::nullopt;
}

std::string importedTitle(std::string_view written) {
    const auto head = wholeCodePoints(written, titleBytes);
    return std::string{firstCharacters(wellFormed(head), titleLimit)};
}

std::string nameOf(const Url& url) {
    return importedTitle(url.host().value_or(url.absoluteString()));
}

}  // namespace orvu
