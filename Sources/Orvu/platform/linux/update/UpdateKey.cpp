#include "platform/linux/update/UpdateKey.h"

#include <sodium.h>
#include <unistd.h>

#include <vector>

namespace orvu {
namespace {

static_assert(crypto_sign_PUBLICKEYBYTES == 32 && crypto_hash_sha256_BYTES == 32);

constexpr std::size_t pieceSize = 1 << 17;  // bytes

template <std::size_t size>
bool readHexadecimal(std::string_view digits, std::array<unsigned char, size>& bytes) {
    return isHexadecimal(digits, 2 * size) &&
           sodium_hex2bin(bytes.data(), size, digits.data(), digits.size(), nullptr, nullptr,
                          nullptr) == 0;
}

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

std::optional<UpdateKey> UpdateKey::configured() { return parse(ORVU_UPDATE_KEY); }

std::optional<UpdateKey> UpdateKey::parse(std::string_view digits) {
    UpdateKey key;
    if (!readHexadecimal(digits, key.bytes_)) return std::nullopt;
    return key;
}

bool UpdateKey::signs(const SignedMessage& message) const {
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    return sodium_init() >= 0 && readHexadecimal(message.signature, signature) &&
           crypto_sign_verify_detached(signature.data(), bytesOf(message.text), message.text.size(),
                                       bytes_.data()) == 0;
}

std::optional<SignedText> UpdateKey::open(std::string_view bytes) const {
    const auto message = SignedMessage::split(bytes);
    if (!message || !signs(*message)) return std::nullopt;
    return SignedText::parse(message->text);
}

std::string sha256(int descriptor) {
    crypto_hash_sha256_state state;
    crypto_hash_sha256_init(&state);
    std::vector<unsigned char> piece(pieceSize);
    for (off_t at = 0;;) {
        const ssize_t count = pread(descriptor, piece.data(), piece.size(), at);
        if (count < 0) return {};
        if (count == 0) break;
        crypto_hash_sha256_update(&state, piece.data(), static_cast<std::size_t>(count));
        at += count;
    }
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256_final(&state, hash.data());
    std::array<char, 2 * crypto_hash_sha256_BYTES + 1> digits{};
    return sodium_bin2hex(digits.data(), digits.size(), hash.data(), hash.size());
}

}  // namespace orvu
