#include "update/UpdateServer.h"

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
    return "Couldn't reach " + host_ + ". Check your connection and try again.";
}

std::string UpdateServer::mismatch() const {
    return "The download didn't match what " + host_ + " published.";
}

std::string UpdateServer::unsignedCopy() const {
    return "This copy of Orvu isn't signed for updates. Download Orvu from " + host_ + "/orvu.";
}

}  // namespace orvu
