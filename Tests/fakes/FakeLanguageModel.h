#pragma once

#include "platform/LanguageModel.h"

#include <deque>
#include <string>
#include <vector>

namespace orvu {

/// A model that answers when the test says so.
class FakeLanguageModel : public LanguageModel {
public:
    struct Request {
        std::string prompt;
        std::string instructions;
        Promise<ModelResponse> promise;

        void succeed(const std::string& text) const { promise.resolve({true, text}); }
        void fail(const std::string& text) const { promise.resolve({false, text}); }
        [[nodiscard]] bool isWanted() const { return promise.isWanted(); }
    };

    [[nodiscard]] std::optional<UnavailableReason> unavailableReason() const override {
        return reason_;
    }
    [[nodiscard]] std::string modelName() const override { return name_; }
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) override {
        requests.push_back({prompt, instructions, {}});
        if (atOnce) requests.back().promise.resolve(*atOnce);
        return requests.back().promise.future();
    }
    void look() override { ++looks; }
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

    void setUnavailable(std::optional<UnavailableReason> reason) {
        reason_ = reason;
        changed_.emit();
    }
    void setName(const std::string& name) {
        name_ = name;
        changed_.emit();
    }

    std::deque<Request> requests;         ///< a deque, so that they stay where they are
    std::optional<ModelResponse> atOnce;  ///< if set, the answer to each request, at once
    int looks = 0;

private:
    std::optional<UnavailableReason> reason_;
    std::string name_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
