#include "platform/SourceAddress.h"

#include <string>
#include <string_view>

namespace orvu {
namespace {

constexpr std::string_view beginning = "view-source:";

}  // namespace

std::optional<Url> sourceAddress(const Url& page) {
    if (pageOfSource(page)) return page;
    return Url::parse(std::string{beginning} + page.absoluteString());
}

std::optional<Url> pageOfSource(const Url& address) {
    const std::string_view text = address.absoluteString();
    return text.starts_with(beginning) ? Url::parse(text.substr(beginning.size())) : std::nullopt;
}

}  // namespace orvu
