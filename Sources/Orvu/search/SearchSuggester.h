#pragma once

#include "foundation/async/TaskScope.h"
#include "platform/HttpSession.h"
#include "platform/MainLoop.h"
#include "profiles/Settings.h"
#include "search/Suggestions.h"

#include <sigc++/sigc++.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvu {

/// Asks the search engine what a person may be about to type. Some texts are never sent, see
/// `SuggestionGate`.
class SearchSuggester : public Suggestions {
public:
    /// Where an engine tells its suggestions for a text.
    using AddressOf = std::function<std::optional<Url>(Prefs::Engine, std::string_view)>;

    static constexpr HttpOptions httpOptions{.timeout = std::chrono::seconds{4},
                                             .totalTimeout = std::chrono::seconds{8},
                                             .bodyLimit = std::size_t{256} * 1024,
                                             .connectionsPerHost = 2};
    /// How long a text must stand before it is sent.
    static constexpr std::chrono::milliseconds debounce{90};
    static constexpr std::size_t maxPredictions = 6;
    static constexpr std::size_t maxLanguages = 3;

    /// `http` was made with `httpOptions`. `preferredLanguages` are tags of BCP 47, of which the
    /// first few are told to the engine. All that is referred to must outlive the suggester.
    SearchSuggester(HttpSession& http, MainLoop& loop, const Settings& settings,
                    const std::vector<std::string>& preferredLanguages,
                    AddressOf addressOf = &Prefs::suggestURL);
    SearchSuggester(const SearchSuggester&) = delete;
    SearchSuggester& operator=(const SearchSuggester&) = delete;

    [[nodiscard]] const std::vector<std::string>& predictions() const override {
        return predictions_;
    }
    [[nodiscard]] const std::string& forQuery() const override { return forQuery_; }
    [[nodiscard]] std::optional<std::string> correction(std::string_view query) const override;
    void update(std::string_view query, Privacy privacy) override;
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

    /// The texts of an engine's answer: trimmed, without repetitions, the first few. Nothing of an
    /// answer that has another form.
    [[nodiscard]] static std::vector<std::string> parse(std::string_view answer);
    [[nodiscard]] static std::size_t distance(std::string_view a, std::string_view b);

private:
    [[nodiscard]] Task<void> ask(std::string query, std::string key, Prefs::Engine engine);
    void show(std::vector<std::string> predictions, std::string query);

    HttpSession& http_;
    MainLoop& loop_;
    const Settings& settings_;
    const HttpSession::Headers headers_;
    const AddressOf addressOf_;
    std::vector<std::string> predictions_;
    std::string forQuery_;
    std::unordered_map<std::string, std::vector<std::string>> cache_;  ///< by text in lower case
    sigc::signal<void()> changed_;
    TaskScope tasks_;  // last, so that it ends before what it uses
};

}  // namespace orvu
