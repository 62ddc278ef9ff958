#pragma once

#include "platform/WebsiteData.h"
#include "platform/linux/web/WebKitSession.h"

#include <memory>

namespace orvu {

/// Deletes all that websites have in a session, which is held until that is done. Goes on to the end
/// even if the future is dropped. The future gives whether it succeeded.
[[nodiscard]] Future<bool> clearWebsiteData(const std::shared_ptr<WebKitSession>& session);

/// What websites stored in a session of the engine, be it on disk or in memory.
class SessionWebsiteData : public WebsiteData {
public:
    explicit SessionWebsiteData(std::shared_ptr<WebKitSession> session)
        : session_(std::move(session)) {}

    [[nodiscard]] Future<std::vector<std::string>> records() override;
    [[nodiscard]] Future<bool> remove(std::vector<std::string> names) override;

private:
    const std::shared_ptr<WebKitSession> session_;
};

}  // namespace orvu
