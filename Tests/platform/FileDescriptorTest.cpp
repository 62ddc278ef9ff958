#include "platform/linux/files/FileDescriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace orvu {
namespace {

bool isOpen(int number) { return fcntl(number, F_GETFD) >= 0; }

int openSomething() { return open("/dev/null", O_RDONLY | O_CLOEXEC); }

TEST(FileDescriptorTest, ClosesWhatItOwns) {
    const int number = openSomething();
    {
        const FileDescriptor owner{number};
        EXPECT_TRUE(owner);
        EXPECT_EQ(owner.get(), number);
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptorTest, AFailedCallOwnsNothing) {
    EXPECT_FALSE(FileDescriptor{});
    EXPECT_FALSE(FileDescriptor{open("/nowhere/at/all", O_RDONLY | O_CLOEXEC)});
}

TEST(FileDescriptorTest, MovingHandsOverAndClosesWhatStoodThere) {
    const int first = openSomething();
    const int second = openSomething();
    FileDescriptor from{first};
    FileDescriptor to{second};

    to = std::move(from);

    EXPECT_EQ(to.get(), first);
    EXPECT_TRUE(isOpen(first));
    EXPECT_FALSE(isOpen(second));
    to.reset();
    EXPECT_FALSE(isOpen(first));
    EXPECT_FALSE(to);
}

}  // namespace
}  // namespace orvu
