#include "platform/linux/files/FileText.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <string>

namespace orvu {
namespace {

class FileTextTest : public testing::Test {
protected:
    void write(const std::string& text) const { std::ofstream{file, std::ios::binary} << text; }

    TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "file";
};

TEST_F(FileTextTest, AllBytesOfAFileAreRead) {
    std::string text(200'000, 'x');
    text.append("\0\r\n\xFF", 4);
    write(text);

    EXPECT_EQ(fileText(file), text);
}

TEST_F(FileTextTest, AnEmptyFileHasAnEmptyText) {
    write("");

    EXPECT_EQ(fileText(file), "");
}

TEST_F(FileTextTest, NoMoreIsReadThanWanted) {
    write(std::string(100'001, 'a'));

    EXPECT_EQ(fileText(file, 100'000), std::string(100'000, 'a'));
    EXPECT_EQ(fileText(file, 3), "aaa");
    EXPECT_EQ(fileText(file, 0), "");
}

TEST_F(FileTextTest, WhatIsNotThereHasNone) { EXPECT_FALSE(fileText(file)); }

TEST_F(FileTextTest, AFolderHasNone) { EXPECT_FALSE(fileText(folder.path())); }

TEST_F(FileTextTest, WhatFailsWhileItIsReadHasNone) { EXPECT_FALSE(fileText("/proc/self/mem")); }

/// It may end between the opening of its file and the reading.
TEST_F(FileTextTest, AProcessThatEndsMeanwhileIsNoError) {
    for (int each = 0; each < 20; ++each) {
        const pid_t process = fork();
        if (process == 0) {
            pause();
            _exit(0);
        }
        ASSERT_GT(process, 0);
        const auto facts = "/proc/" + std::to_string(process) + "/stat";
        EXPECT_TRUE(fileText(facts));
        kill(process, SIGKILL);
        while (waitpid(process, nullptr, WNOHANG) == 0) {
            EXPECT_NO_THROW(static_cast<void>(fileText(facts)));
        }
        EXPECT_FALSE(fileText(facts));
    }
}

}  // namespace
}  // namespace orvu
