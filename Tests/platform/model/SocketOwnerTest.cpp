#include "platform/model/SocketOwner.h"

#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

constexpr std::uint32_t me = 1000;
constexpr std::uint32_t other = 1001;

/// Made of what a computer with the common order of bytes writes.
constexpr const char* loopback = "0100007F";
constexpr const char* loopback6 = "00000000000000000000000001000000";
constexpr const char* mapped = "0000000000000000FFFF00000100007F";
constexpr const char* any = "00000000";
constexpr const char* any6 = "00000000000000000000000000000000";
constexpr const char* serverPort = ":2CAA";  // 11434
constexpr const char* clientPort = ":C350";  // 50000

std::string line(const std::string& local, const std::string& remote, const std::string& state,
                 std::uint32_t user, int inode) {
    return "   0: " + local + " " + remote + " " + state +
           " 00000000:00000000 00:00000000 00000000 " + std::to_string(user) + "        0 " +
           std::to_string(inode) + " 1 0000000000000000 20 4 30 10 -1\n";
}
std::string listener(const std::string& host, std::uint32_t user) {
    return line(host + serverPort, std::string(host.size(), '0') + ":0000", "0A", user, 77);
}
/// The server's end of the connection.
std::string accepted(const std::string& host, std::uint32_t user, int inode = 78) {
    return line(host + serverPort, host + clientPort, "01", user, inode);
}
/// The other end, which is ours.
std::string ours(const std::string& host) {
    return line(host + clientPort, host + serverPort, "01", me, 79);
}

const std::string head =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode\n";

SocketAddress ipv4(std::uint16_t port) {
    return {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 127, 0, 0, 1}, port};
}
SocketAddress ipv6(std::uint16_t port) {
    return {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, port};
}
ServerOwner owner(const std::string& tcp, const std::string& tcp6 = "") {
    return serverOwner({head + tcp, head + tcp6}, ipv4(50000), ipv4(11434), me);
}
ServerOwner owner6(const std::string& tcp6, const std::string& tcp = "") {
    return serverOwner({head + tcp, head + tcp6}, ipv6(50000), ipv6(11434), me);
}

TEST(SocketOwnerTest, ThisPersonsServerAndTheSystemsAreTrusted) {
    for (const std::uint32_t user : {me, 0U, 114U, 999U}) {
        EXPECT_EQ(owner(ours(loopback) + accepted(loopback, user)), ServerOwner::trusted) << user;
    }
}

TEST(SocketOwnerTest, AnotherPersonsServerIsNot) {
    for (const std::uint32_t user : {other, 65534U, 4294967294U}) {
        EXPECT_EQ(owner(ours(loopback) + accepted(loopback, user)), ServerOwner::anotherPerson)
            << user;
    }
}

TEST(SocketOwnerTest, TheVeryConnectionCountsBeforeWhoListens) {
    EXPECT_EQ(owner(listener(loopback, me) + accepted(loopback, other)),
              ServerOwner::anotherPerson);
    EXPECT_EQ(owner(listener(loopback, other) + accepted(loopback, me)), ServerOwner::trusted);
}

TEST(SocketOwnerTest, WhileNobodyHasAcceptedTheListenerCounts) {
    // Such a connection has the user 0 and no inode.
    EXPECT_EQ(owner(listener(loopback, me) + accepted(loopback, 0, 0)), ServerOwner::trusted);
    EXPECT_EQ(owner(listener(loopback, other) + accepted(loopback, 0, 0)),
              ServerOwner::anotherPerson);
    EXPECT_EQ(owner(listener(any, other) + accepted(loopback, 0, 0)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner(accepted(loopback, 0, 0)), ServerOwner::unknown);
}

TEST(SocketOwnerTest, WhoListensAtTheVeryAddressCountsBeforeWhoListensAtAll) {
    EXPECT_EQ(owner(listener(any, other) + listener(loopback, me)), ServerOwner::trusted);
    EXPECT_EQ(owner(listener(any, me) + listener(loopback, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner(listener(loopback, me), listener(any6, other)), ServerOwner::trusted);
}

TEST(SocketOwnerTest, OfSeveralListenersAllMustBeTrusted) {
    EXPECT_EQ(owner(listener(loopback, me) + listener(loopback, other)),
              ServerOwner::anotherPerson);
    EXPECT_EQ(owner(listener(any, me), listener(any6, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner(listener(any, me), listener(any6, me)), ServerOwner::trusted);
}

TEST(SocketOwnerTest, AServerOfBothKindsOfAddressesStandsInTheOtherTable) {
    EXPECT_EQ(owner("", accepted(mapped, me)), ServerOwner::trusted);
    EXPECT_EQ(owner("", accepted(mapped, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner(ours(loopback), listener(any6, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner(ours(loopback), listener(mapped, me)), ServerOwner::trusted);
}

TEST(SocketOwnerTest, OverIpv6OnlyItsOwnTableCounts) {
    EXPECT_EQ(owner6(accepted(loopback6, me)), ServerOwner::trusted);
    EXPECT_EQ(owner6(accepted(loopback6, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner6(listener(any6, other)), ServerOwner::anotherPerson);
    EXPECT_EQ(owner6("", listener(any, me)), ServerOwner::unknown);
    EXPECT_EQ(owner6("", listener(loopback, me)), ServerOwner::unknown);
}

TEST(SocketOwnerTest, OtherConnectionsAndPortsSayNothing) {
    const auto otherPort = line("0100007F:2CAB", "00000000:0000", "0A", me, 5);
    const auto otherClient = line("0100007F:2CAA", "0100007F:C351", "01", me, 5);

    EXPECT_EQ(owner(otherPort + otherClient + ours(loopback)), ServerOwner::unknown);
    EXPECT_EQ(owner(otherClient + listener(loopback, other)), ServerOwner::anotherPerson);
}

TEST(SocketOwnerTest, WithoutTablesNobodyKnows) {
    EXPECT_EQ(serverOwner({}, ipv4(50000), ipv4(11434), me), ServerOwner::unknown);
}

TEST(SocketOwnerTest, LinesThatCannotBeReadAreLeftOut) {
    const std::string good = accepted(loopback, me);
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_EQ(owner(good.substr(0, size)), ServerOwner::unknown) << size;
    }
    for (const char* const bad :
         {"\n\n \n", "0: 0100007F 0100007F:C350 01 0 0 0 1000 0 5\n",
          "0: 0100007F:2CAAFFFF 0100007F:C350 01 0 0 0 1000 0 5\n",
          "0: 0100007F:2CAA 0100007F:C350 01 0 0 0 -1 0 5\n",
          "0: 0100007F:2CAA 0100007F:C350 01 0 0 0 99999999999999999999 0 5\n",
          "0: 0100007G:2CAA 0100007F:C350 01 0 0 0 1000 0 5\n",
          "0: 0100007F:2CAA 0100007F:C350 01 0 0 0 1000 0 x\n"}) {
        EXPECT_EQ(owner(bad), ServerOwner::unknown) << bad;
        EXPECT_EQ(owner(bad + accepted(loopback, other)), ServerOwner::anotherPerson) << bad;
    }
    std::string rubbish(100000, 'x');
    rubbish += '\n';
    rubbish.append(1000, '\0');
    EXPECT_EQ(owner(rubbish + "\n" + good), ServerOwner::trusted);
}

}  // namespace
}  // namespace orvu
