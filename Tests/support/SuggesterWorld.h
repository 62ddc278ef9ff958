#pragma once

#include "foundation/json/Json.h"
#include "search/SearchSuggester.h"
#include "support/FakeDesktop.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A suggester and all that it needs, on fakes.
struct SuggesterWorld : FakeDesktop {
    using Privacy = SearchSuggester::Privacy;

    SuggesterWorld() {
        suggester->connectChanged([this] { ++changes; });
    }

    void type(std::string_view text) { suggester->update(text, Privacy::ordinary); }
    void typePrivately(std::string_view text) { suggester->update(text, Privacy::privateWindow); }
    /// Lets a text stand until it is sent.
    void pause() { loop.advance(SearchSuggester::debounce); }
    /// Types a text and lets it stand until it is sent.
    void ask(std::string_view text) {
        type(text);
        pause();
    }
    /// Answers the request for `text`, in the form that all engines have. False if there is none.
    bool answer(const std::string& text, const std::vector<std::string>& offered,
                Prefs::Engine asked = Prefs::Engine::google) {
        return answerWith(address(text, asked), body(text, offered));
    }
    bool answerWith(const std::string& url, const std::string& bytes, int status = 200) {
        const bool wasOpen = http.answer(url, status, bytes);
        loop.advance(std::chrono::milliseconds{0});
        return wasOpen;
    }
    /// Types a text, lets it stand and answers it.
    void learn(const std::string& text, const std::vector<std::string>& offered) {
        ask(text);
        answer(text, offered);
    }

    [[nodiscard]] static std::string address(std::string_view text,
                                             Prefs::Engine asked = Prefs::Engine::google) {
        return Prefs::suggestURL(asked, text)->absoluteString();
    }
    [[nodiscard]] static std::string body(std::string_view text,
                                          const std::vector<std::string>& offered) {
        JsonWriter writer;
        writer.beginArray().value(text).beginArray();
        for (const auto& each : offered) writer.value(std::string_view{each});
        writer.endArray().endArray();
        return std::move(writer).finish().value();
    }
    [[nodiscard]] const std::vector<std::string>& predictions() const {
        return suggester->predictions();
    }

    Settings settings{defaults};
    FakeHttpSession& http = suggestionRequests;
    int changes = 0;  ///< how many signals went out
    std::unique_ptr<SearchSuggester> suggester = std::make_unique<SearchSuggester>(
        http, loop, settings, std::vector<std::string>{"de-DE", "en", "fr", "it"});
};

}  // namespace orvu
