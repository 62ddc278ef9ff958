#pragma once

#include "foundation/text/Translation.h"
#include "foundation/Url.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The server of the updates, with the sentences that name it.
class UpdateServer {
public:
    /// The one that this program was built for; without a name if there is none.
    [[nodiscard]] static UpdateServer configured();

    explicit UpdateServer(std::string host) : host_(std::move(host)) {}

    [[nodiscard]] const std::string& host() const { return host_; }
    /// Where the manifest stands. There must be a host.
    [[nodiscard]] Url feed() const { return address("/orvu/update.json"); }
    /// The page of the release notes. There must be a host.
    [[nodiscard]] Url whatsNew() const { return address("/orvu/whats-new/"); }
    /// Where the signed text of an archive stands.
    [[nodiscard]] static std::optional<Url> signedText(const Url& archive);
    /// Whether an address is one of this server's over https, without a port, a name, a query or a
    /// fragment.
    [[nodiscard]] bool serves(const Url& url) const;

    [[nodiscard]] std::string unreachable() const;
    [[nodiscard]] std::string mismatch() const;
    [[nodiscard]] std::string unsignedCopy() const;

private:
    [[nodiscard]] Url address(std::string_view path) const;

    std::string host_;
};

/// What is said where the server has no part in it.
namespace update_words {

inline constexpr Phrase notUnpacked = phrase("The update couldn't be unpacked.");
inline constexpr Phrase noApplication = phrase("The update isn't a valid app.");
inline constexpr Phrase notSigned =
    phrase("The update isn't signed by Zarvo, so Orvu didn't install it.");
inline constexpr Phrase notDownloaded = phrase("The update couldn't be downloaded. ");
inline constexpr Phrase notRestarted = phrase("Orvu couldn't restart to update. ");
inline constexpr Phrase byItself = phrase("Orvu checks for updates on its own.");
inline constexpr Phrase bySystem =
    phrase("Updates of Orvu come with the system's; ask the administrator of this computer.");

}  // namespace update_words

}  // namespace orvu
