#include "foundation/text/Translation.h"

#include <libintl.h>

#include <mutex>
#include <unordered_map>

namespace orvu {
namespace {

constexpr const char* domain = "orvu";

/// The texts as they are worded here, by where they stand in the program or the catalogue, for good.
class Wordings {
public:
    void use(Wording wording) { wording_ = wording; }

    const char* of(const char* text) {
        // What the wording itself says, such as the names of keys, is only translated.
        thread_local bool isWording = false;
        if (!wording_ || isWording) return text;
        const std::lock_guard lock{mutex_};
        const auto [place, isNew] = worded_.try_emplace(text);
        if (isNew) {
            isWording = true;
            place->second = wording_(text);
            isWording = false;
        }
        return place->second.c_str();
    }

private:
    Wording wording_ = nullptr;
    std::mutex mutex_;
    std::unordered_map<const char*, std::string> worded_;
};

Wordings& wordings() {
    static Wordings all;
    return all;
}

}  // namespace

void useWording(Wording wording) { wordings().use(wording); }

void useTranslations(const std::filesystem::path& folder) {
    bindtextdomain(domain, folder.c_str());
    bind_textdomain_codeset(domain, "UTF-8");
}

const char* Phrase::c_str() const {
    // The empty text stands for the head of a catalogue.
    return empty() ? english_ : wordings().of(dgettext(domain, english_));
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
    return wordings().of(dngettext(domain, one, many, count));
}

}  // namespace orvu
