#pragma once

#include "update/SignedText.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The public key that updates are signed with (Ed25519).
class UpdateKey {
public:
    /// The one that this program was built with; nothing if there is none.
    [[nodiscard]] static std::optional<UpdateKey> configured();
    /// Reads 64 digits of lower-case hexadecimal.
    [[nodiscard]] static std::optional<UpdateKey> parse(std::string_view digits);

    /// Whether the signature is that of the message's text.
    [[nodiscard]] bool signs(const SignedMessage& message) const;
    /// The text of a message that this key signs and that follows all rules.
    [[nodiscard]] std::optional<SignedText> open(std::string_view bytes) const;

private:
    static constexpr std::size_t size = 32;
    std::array<unsigned char, size> bytes_{};
};

/// The SHA-256 of an open file from its beginning, in lower-case hexadecimal; empty if it can't be
/// read.
[[nodiscard]] std::string sha256(int descriptor);

}  // namespace orvu
