#pragma once

#include "platform/ContentRules.h"

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// Compiles when a test says so.
class FakeRuleListStore : public ContentRuleListStore {
public:
    struct Source {
        std::string identifier;
        std::string rules;
    };

    [[nodiscard]] Future<Compiled> compile(std::string identifier,
                                           std::string encodedRules) override {
        sources.push_back({std::move(identifier), std::move(encodedRules)});
        answers.emplace_back();
        return answers.back().future();
    }

    /// The compile that was asked for last ends well. Gives the list.
    Compiled succeed() {
        auto list = std::make_shared<const ContentRuleList>();
        answers.back().resolve(list);
        return list;
    }
    void fail() { answers.back().resolve(nullptr); }

    std::vector<Source> sources;
    std::deque<Promise<Compiled>> answers;
};

}  // namespace orvu
