#include "update/UpdateServer.h"

#include "foundation/text/Translation.h"

namespace orvu {

UpdateServer UpdateServer::configured() { return UpdateServer{ORVU_UPDATE_SERVER}; }

Url UpdateServer::address(std::string_view path) const {
    return Url::parse("https://" + host_ + std::string{path}).value();
}

std::optional<Url> UpdateServer::signedText(const Url& archive) {
    return Url::parse(archive.absoluteString() + ".signed");
}

bool UpdateServer::serves(const Url& url) const {
    const std::string& text = url.absoluteString();
    return !host_.empty() && text.starts_with("https://" + host_ + "/") &&
           text.find_first_of("?#\\") == std::string::npos;
}

std::string UpdateServer::unreachable() const {
    return tr("Couldn't reach {1}. Check your connection and try again.", host_);
}

std::string UpdateServer::mismatch() const {
    return tr("The download didn't match what {1} published.", host_);
}

std::string UpdateServer::unsignedCopy() const {
    return tr("This copy of Orvu isn't signed for updates. Download Orvu from {1}/orvu.", host_);
}

}  // namespace orvu
