#include "ProjectPaths.h"
#include "fuzz/Targets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvu {
namespace {

struct Replay {
    const char* name;
    std::string (*target)(std::string_view);
};

/// The files of a target's corpus, sorted by name.
std::vector<std::filesystem::path> corpus(const std::string& name) {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder{ProjectPaths::fuzzCorpus};
    for (const auto& entry : std::filesystem::directory_iterator{folder / name}) {
        files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

class CorpusReplay : public testing::TestWithParam<Replay> {};

TEST_P(CorpusReplay, NoFileBreaksARule) {
    const auto files = corpus(GetParam().name);

    EXPECT_GE(files.size(), 12U);
    for (const auto& file : files) {
        std::ifstream stream{file, std::ios::binary};
        ASSERT_TRUE(stream) << file;
        const std::string input{std::istreambuf_iterator<char>{stream}, {}};

        EXPECT_EQ(GetParam().target(input), "") << file;
    }
}

constexpr Replay replays[]{
#include "FuzzTargets.inc"
};

INSTANTIATE_TEST_SUITE_P(Targets, CorpusReplay, testing::ValuesIn(replays), [](const auto& each) {
    std::string name = each.param.name;
    std::ranges::replace(name, '-', '_');
    return name;
});

}  // namespace
}  // namespace orvu
