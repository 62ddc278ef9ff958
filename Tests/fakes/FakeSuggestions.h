#pragma once

#include "search/Suggestions.h"

#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// Predictions that come when a test says so.
class FakeSuggestions : public Suggestions {
public:
    using Texts = std::vector<std::string>;

    [[nodiscard]] const Texts& predictions() const override { return predictions_; }
    [[nodiscard]] const std::string& forQuery() const override { return forQuery_; }
    [[nodiscard]] std::optional<std::string> correction(std::string_view query) const override {
        return query == forQuery_ ? correction_ : std::nullopt;
    }
    void update(std::string_view query, Privacy privacy) override {
        if (privacy == Privacy::ordinary) asked.emplace_back(query);
    }
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

    /// The answer to the last text, of which `query` is what stands behind a bang. False if that
    /// was not asked for.
    bool answer(const std::string& query, Texts predictions,
                std::optional<std::string> correction = std::nullopt) {
        if (asked.empty() || !asked.back().ends_with(query)) return false;
        predictions_ = std::move(predictions);
        forQuery_ = query;
        correction_ = std::move(correction);
        changed_.emit();
        return true;
    }

    Texts asked;  ///< the texts that would leave the program, in order

private:
    Texts predictions_;
    std::string forQuery_;
    std::optional<std::string> correction_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
