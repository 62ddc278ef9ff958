#include "foundation/text/Translation.h"

#include <libintl.h>

namespace orvu {
namespace {

constexpr const char* domain = "orvu";

}  // namespace

void useTranslations(const std::filesystem::path& folder) {
    bindtextdomain(domain, folder.c_str());
    bind_textdomain_codeset(domain, "UTF-8");
}

const char* Phrase::c_str() const {
    // The empty text stands for the head of a catalogue.
    return empty() ? english_ : dgettext(domain, english_);
}

std::string filled(std::string_view pattern, std::initializer_list<std::string_view> values) {
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto place = pattern.substr(i, 3);
        const bool isPlace = place.size() == 3 && place[0] == '{' && place[2] == '}' &&
                             place[1] >= '1' && place[1] <= '9';
        const auto number = isPlace ? static_cast<std::size_t>(place[1] - '1') : values.size();
        if (number < values.size()) {
            text.append(values.begin()[number]);
            i += 2;
        } else {
            text.push_back(pattern[i]);
        }
    }
    return text;
}

std::string_view pluralPattern(const char* one, const char* many, unsigned long count) {
    return dngettext(domain, one, many, count);
}

}  // namespace orvu
