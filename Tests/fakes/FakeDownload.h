#pragma once

#include "platform/Download.h"

#include <optional>
#include <string_view>

namespace orvu {

/// A download that does what a test says.
class FakeDownload : public Download {
public:
    /// What became of a download that may be gone already.
    struct Facts {
        int cancels = 0;
        bool ended = false;
    };

    explicit FakeDownload(Facts& facts) : facts_(facts) {}
    ~FakeDownload() override { facts_.ended = true; }

    void setDelegate(DownloadDelegate* delegate) override { delegate_ = delegate; }
    [[nodiscard]] double fractionCompleted() const override { return fraction_; }
    void cancel() override { ++facts_.cancels; }

    // What a test makes happen.
    std::optional<std::filesystem::path> decide(std::string_view suggestedName) {
        return delegate_->decideDestination(suggestedName);
    }
    void progress(double fraction) {
        fraction_ = fraction;
        delegate_->progressed();
    }
    void finish() { delegate_->didFinish(); }
    void fail() { delegate_->didFail(); }

private:
    Facts& facts_;
    DownloadDelegate* delegate_ = nullptr;
    double fraction_ = 0;
};

}  // namespace orvu
