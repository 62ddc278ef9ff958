#pragma once

#include "platform/UpdateInstaller.h"

#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// An installer whose answers a test sets. It notes what it was asked, in order.
class FakeUpdateInstaller : public UpdateInstaller {
public:
    [[nodiscard]] UpdateSupport support() const override { return supported; }
    [[nodiscard]] std::int64_t takenBack() const override { return takenBackBuild; }
    [[nodiscard]] Future<std::optional<std::filesystem::path>> prepare() override {
        return answer("prepare", place);
    }
    [[nodiscard]] Future<std::string> digest() override { return answer("digest", archiveDigest); }
    [[nodiscard]] Future<Staged> stage(ExpectedUpdate update) override {
        expected = std::move(update);
        return answer("stage", staged);
    }
    void discard() override { calls.emplace_back("discard"); }
    [[nodiscard]] std::optional<std::string> launchSwap(AfterSwap after) override {
        calls.emplace_back(after == AfterSwap::startAgain ? "swap and start" : "swap");
        return launchFailure;
    }
    void confirmStart() override { calls.emplace_back("confirm"); }

    UpdateSupport supported = UpdateSupport::own;
    std::int64_t takenBackBuild = 0;
    std::optional<std::filesystem::path> place = "archive";
    std::string archiveDigest = "abcd";
    Staged staged{.path = "staged"};
    std::optional<std::string> launchFailure;
    ExpectedUpdate expected;
    std::vector<std::string> calls;

private:
    template <class T>
    Future<T> answer(const char* call, T value) {
        calls.emplace_back(call);
        const Promise<T> promise;
        promise.resolve(std::move(value));
        return promise.future();
    }
};

}  // namespace orvu
