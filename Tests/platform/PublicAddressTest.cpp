#include "platform/PublicAddress.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

namespace orvu {
namespace {

bool isPublic(const std::string& address) {
    std::array<std::uint8_t, 16> bytes{};
    const bool isLong = address.contains(':');
    EXPECT_EQ(inet_pton(isLong ? AF_INET6 : AF_INET, address.c_str(), bytes.data()), 1) << address;
    return isPublicAddress(std::span{bytes}.first(isLong ? 16 : 4));
}

TEST(PublicAddressTest, AddressesOfTheWorldArePublic) {
    for (const auto* address :
         {"1.1.1.1",        "8.8.8.8",     "9.255.255.255",   "11.0.0.0",
          "100.63.255.255", "100.128.0.0", "126.255.255.255", "128.0.0.1",
          "169.253.0.1",    "169.255.0.1", "172.15.255.255",  "172.32.0.0",
          "192.0.1.1",      "192.167.1.1", "192.169.0.1",     "198.17.0.1",
          "198.20.0.1",     "203.0.112.1", "223.255.255.255", "2001:4860:4860::8888",
          "2a00:1450::1",   "3ffe::1",     "2606:4700::1111"}) {
        EXPECT_TRUE(isPublic(address)) << address;
    }
}

TEST(PublicAddressTest, ThisComputerAndItsNetworkAreNot) {
    for (const auto* address : {"0.0.0.0",
                                "0.1.2.3",
                                "10.0.0.1",
                                "10.255.255.255",
                                "100.64.0.1",
                                "100.127.255.255",
                                "127.0.0.1",
                                "127.255.255.254",
                                "169.254.169.254",
                                "172.16.0.1",
                                "172.31.255.255",
                                "192.0.0.1",
                                "192.0.2.1",
                                "192.88.99.1",
                                "192.168.0.1",
                                "192.168.255.255",
                                "198.18.0.1",
                                "198.19.255.255",
                                "198.51.100.7",
                                "203.0.113.9",
                                "224.0.0.1",
                                "239.1.1.1",
                                "240.0.0.1",
                                "255.255.255.255",
                                "::",
                                "::1",
                                "fe80::1",
                                "febf::1",
                                "fec0::1",
                                "fc00::1",
                                "fd12::1",
                                "ff02::1",
                                "100::1",
                                "2001:db8::1",
                                "2001::1",
                                "2001:10::1",
                                "3fff::1",
                                "4000::1",
                                "5f00::1"}) {
        EXPECT_FALSE(isPublic(address)) << address;
    }
}

TEST(PublicAddressTest, AnAddressThatHoldsAnotherIsWhatThatIs) {
    for (const auto* address : {"::ffff:127.0.0.1", "::ffff:192.168.1.1", "64:ff9b::10.0.0.1",
                                "2002:7f00:1::", "2002:c0a8:101::1", "::127.0.0.1"}) {
        EXPECT_FALSE(isPublic(address)) << address;
    }
    for (const auto* address : {"::ffff:8.8.8.8", "64:ff9b::8.8.8.8", "2002:808:808::1"}) {
        EXPECT_TRUE(isPublic(address)) << address;
    }
}

TEST(PublicAddressTest, OtherLengthsAreNotPublic) {
    const std::array<std::uint8_t, 17> bytes{8, 8, 8, 8, 8};
    for (const std::size_t size : {0U, 1U, 3U, 5U, 15U, 17U}) {
        EXPECT_FALSE(isPublicAddress(std::span{bytes}.first(size))) << size;
    }
}

TEST(PublicAddressTest, NamesOfThisComputerAreKnown) {
    for (const auto* host :
         {"localhost", "LOCALHOST", "localhost.", "a.localhost", "a.b.LocalHost.."}) {
        EXPECT_TRUE(namesThisComputer(host)) << host;
    }
    for (const auto* host : {"", "a", "localhost.example", "notlocalhost", "example.org"}) {
        EXPECT_FALSE(namesThisComputer(host)) << host;
    }
}

}  // namespace
}  // namespace orvu
