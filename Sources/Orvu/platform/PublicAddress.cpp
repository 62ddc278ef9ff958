#include "platform/PublicAddress.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace orvu {
namespace {

/// All addresses that begin as `bytes` do, up to a number of bits.
template <std::size_t size>
struct Block {
    std::array<std::uint8_t, size> bytes;
    int bits;
};

/// Special purposes in version 4, after the registry of the Internet Assigned Numbers Authority.
constexpr std::array<Block<4>, 16> special4{{
    {{0}, 8},              // this network
    {{10}, 8},             // private
    {{100, 64}, 10},       // shared behind a carrier's translator
    {{127}, 8},            // this computer
    {{169, 254}, 16},      // this link
    {{172, 16}, 12},       // private
    {{192, 0, 0}, 24},     // for protocols
    {{192, 0, 2}, 24},     // for documents
    {{192, 31, 196}, 24},  // for name servers
    {{192, 52, 193}, 24},  // for tunnels
    {{192, 88, 99}, 24},   // for relays
    {{192, 168}, 16},      // private
    {{198, 18}, 15},       // for measurements
    {{198, 51, 100}, 24},  // for documents
    {{203, 0, 113}, 24},   // for documents
    {{224}, 3},            // groups, and what is reserved
}};

/// Where addresses of the world stand in version 6, and what of that has another purpose.
constexpr Block<16> global6{{0x20}, 3};
constexpr std::array<Block<16>, 3> special6{{
    {{0x20, 0x01}, 23},              // for protocols
    {{0x20, 0x01, 0x0d, 0xb8}, 32},  // for documents
    {{0x3f, 0xff}, 20},              // for documents
}};

/// Where version 6 holds an address of version 4, and at which byte that begins.
struct Holder {
    Block<16> block;
    std::size_t at;
};
constexpr std::array<Holder, 4> holders{{
    {{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff}, 96}, 12},  // mapped
    {{{0, 0x64, 0xff, 0x9b}, 96}, 12},                       // translated
    {{{0x20, 0x02}, 16}, 2},                                 // in a tunnel
    {{{}, 96}, 12},                                          // compatible
}};

template <std::size_t size>
bool isIn(std::span<const std::uint8_t> bytes, const Block<size>& block) {
    for (int bit = 0; bit < block.bits; bit += 8) {
        const auto at = static_cast<std::size_t>(bit / 8);
        const int left = std::min(8, block.bits - bit);
        const int mask = 0xFF00 >> left & 0xFF;
        if (((bytes[at] ^ block.bytes[at]) & mask) != 0) return false;
    }
    return true;
}

bool isPublic4(std::span<const std::uint8_t> bytes) {
    return std::ranges::none_of(special4,
                                [&](const Block<4>& block) { return isIn(bytes, block); });
}

bool isPublic6(std::span<const std::uint8_t> bytes) {
    const auto held = std::ranges::find_if(
        holders, [&](const Holder& holder) { return isIn(bytes, holder.block); });
    if (held != holders.end()) return isPublic4(bytes.subspan(held->at, 4));
    return isIn(bytes, global6) && std::ranges::none_of(special6, [&](const Block<16>& block) {
               return isIn(bytes, block);
           });
}

}  // namespace

bool isPublicAddress(std::span<const std::uint8_t> bytes) {
    if (bytes.size() == 4) return isPublic4(bytes);
    return bytes.size() == 16 && isPublic6(bytes);
}

bool namesThisComputer(std::string_view host) {
    std::string name = lowercased(host);
    while (name.ends_with('.')) name.pop_back();
    return name == "localhost" || name.ends_with(".localhost");
}

}  // namespace orvu
