#pragma once

#include "platform/DownloadRequest.h"

#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// A download that a page asks for, and that writes down what becomes of it.
class FakeDownloadRequest : public DownloadRequest {
public:
    using Log = std::vector<std::string>;

    /// What is told goes to `log`, which must outlive this.
    FakeDownloadRequest(Log& log, std::string name, DownloadCause cause,
                        std::string host = "a.example")
        : log_(log), name_(std::move(name)), cause_(cause), host_(std::move(host)) {}
    FakeDownloadRequest(const FakeDownloadRequest&) = delete;
    FakeDownloadRequest& operator=(const FakeDownloadRequest&) = delete;
    ~FakeDownloadRequest() override {
        if (!begun_) log_.push_back(name_ + " dropped");
    }

    [[nodiscard]] DownloadCause cause() const override { return cause_; }
    [[nodiscard]] const std::string& host() const override { return host_; }
    [[nodiscard]] bool holdsConnection() const override { return holdsConnection_; }
    [[nodiscard]] bool setAside() override {
        if (!canBeSetAside_) return false;
        holdsConnection_ = false;
        log_.push_back(name_ + " set aside");
        return true;
    }
    void begin() override {
        begun_ = true;
        log_.push_back(name_ + " begun");
    }

    void holdConnection(bool mayBeSetAside) {
        holdsConnection_ = true;
        canBeSetAside_ = mayBeSetAside;
    }

    bool canBeSetAside = false;

private:
    Log& log_;
    const std::string name_;
    const DownloadCause cause_;
    const std::string host_;
    bool holdsConnection_ = false;
    bool canBeSetAside_ = false;
    bool begun_ = false;
};

}  // namespace orvu
