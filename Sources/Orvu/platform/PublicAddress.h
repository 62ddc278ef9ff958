#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orvu {

/// Whether an address of the internet protocol, of 4 or 16 bytes, is one of the world: not of this
/// computer, of the network around it, of a group of computers, or reserved. Addresses of version
/// 6 that stand for one of version 4 are what that one is.
[[nodiscard]] bool isPublicAddress(std::span<const std::uint8_t> bytes);
/// Whether a host's name always means this computer, whoever is asked.
[[nodiscard]] bool namesThisComputer(std::string_view host);

}  // namespace orvu
