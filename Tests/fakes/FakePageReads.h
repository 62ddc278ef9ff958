#pragma once

#include "platform/PageReads.h"

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// A web whose pages come when a test says so.
class FakePageReads : public PageReads {
public:
    [[nodiscard]] Future<std::optional<PageDocument>> read(PageRequest request) override {
        asked.push_back(std::move(request));
        promises_.emplace_back();
        return promises_.back().future();
    }

    /// Ends the request at this place in `asked`.
    void answer(std::size_t number, std::optional<PageDocument> document) {
        promises_[number].resolve(std::move(document));
    }
    void answerText(std::size_t number, const std::string& html) {
        answer(number, PageDocument{"text/html", html});
    }
    [[nodiscard]] std::size_t wanted() const {
        return static_cast<std::size_t>(
            std::ranges::count_if(promises_, &Promise<std::optional<PageDocument>>::isWanted));
    }

    std::vector<PageRequest> asked;

private:
    std::deque<Promise<std::optional<PageDocument>>> promises_;
};

}  // namespace orvu
