#include "platform/linux/model/ModelFinder.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <map>

namespace orvu {
namespace {

namespace fs = std::filesystem;

class ModelFinderTest : public testing::Test {
protected:
    fs::path write(const fs::path& name, const std::string& content = "GGUF") {
        const fs::path file = home / name;
        fs::create_directories(file.parent_path());
        std::ofstream{file} << content;
        return file;
    }
    [[nodiscard]] ModelPlaces places() {
        environment["HOME"] = home.string();
        return ModelPlaces::usual(
            [this](const char* name) -> std::optional<std::string> {
                const auto at = environment.find(name);
                return at == environment.end() ? std::nullopt : std::optional{at->second};
            },
            home / ".local/share/Orvu/models");
    }
    /// The names of what is found, below the home.
    [[nodiscard]] std::vector<std::string> found() {
        std::vector<std::string> names;
        for (const auto& each : findModels(places())) {
            names.push_back(each.path.lexically_relative(home).string());
        }
        std::ranges::sort(names);
        return names;
    }

    TemporaryFolder folder;
    const fs::path home = folder.path();
    std::map<std::string, std::string> environment;
};

using Names = std::vector<std::string>;

TEST_F(ModelFinderTest, FilesAreFoundWhereEachProgramKeepsThem) {
    const Names names{".cache/huggingface/hub/models--a--b/snapshots/12/model.gguf",
                      ".cache/lm-studio/models/maker/repo/old.gguf",
                      ".cache/llama.cpp/cached.gguf",
                      ".config/Jan/data/llamacpp/models/maker/model/model.gguf",
                      ".lmstudio/models/maker/repo/model.gguf",
                      ".local/share/Orvu/models/mine.GGUF",
                      ".local/share/nomic.ai/GPT4All/orca.gguf"};
    for (const auto& each : names) write(each);

    Names sorted = names;
    std::ranges::sort(sorted);
    EXPECT_EQ(found(), sorted);
}

TEST_F(ModelFinderTest, PlacesThatWereMovedAreFollowed) {
    environment["LLAMA_CACHE"] = (home / "moved").string();
    environment["HF_HOME"] = (home / "hf").string();
    environment["XDG_DATA_HOME"] = (home / "data").string();
    write(".cache/llama.cpp/old.gguf");
    const Names names{"data/nomic.ai/GPT4All/a.gguf", "hf/hub/m/snapshots/1/b.gguf",
                      "moved/c.gguf"};
    for (const auto& each : names) write(each);

    EXPECT_EQ(found(), names);
}

TEST_F(ModelFinderTest, APlaceThatIsNoWholePathIsLeftAlone) {
    environment["LLAMA_CACHE"] = "somewhere";
    environment["OLLAMA_MODELS"] = "";
    EXPECT_EQ(found(), Names{});
}

TEST_F(ModelFinderTest, OtherFilesPartsAndReadersOfPicturesAreLeftOut) {
    const fs::path models = ".local/share/Orvu/models";
    write(models / "notes.txt");
    write(models / "big-00001-of-00003.gguf");
    write(models / "mmproj-model-f16.gguf");
    write(models / "half.gguf.part");
    fs::create_directories(home / models / "folder.gguf");
    mkfifo((home / models / "pipe.gguf").c_str(), S_IRUSR | S_IWUSR);
    fs::create_symlink("/dev/zero", home / models / "zero.gguf");
    fs::create_symlink("nowhere", home / models / "gone.gguf");

    EXPECT_EQ(found(), Names{});
}

TEST_F(ModelFinderTest, AFileWithSeveralNamesIsFoundOnce) {
    const fs::path models = ".local/share/Orvu/models";
    const fs::path blob = write(".cache/huggingface/hub/models--a--b/blobs/abc");
    const fs::path snapshot = home / ".cache/huggingface/hub/models--a--b/snapshots/1";
    fs::create_directories(snapshot);
    fs::create_symlink(blob, snapshot / "model.gguf");
    fs::create_directories(home / models);
    fs::create_hard_link(blob, home / models / "same.gguf");

    EXPECT_EQ(found().size(), 1U);
}

TEST_F(ModelFinderTest, OllamasStoreTellsNamesAndFiles) {
    const std::string digits(64, 'c');
    const std::string manifest =
        R"({"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":"sha256:)" +
        digits + "\"}]}";
    write(".ollama/models/blobs/sha256-" + digits, "weights");
    write(".ollama/models/manifests/registry.ollama.ai/library/otter/1b", manifest);
    write(".ollama/models/manifests/registry.ollama.ai/library/otter/latest", manifest);
    write(".ollama/models/manifests/registry.ollama.ai/library/gone/1b",
          R"({"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":"sha256:)" +
              std::string(64, 'd') + "\"}]}");
    mkfifo((home / ".ollama/models/manifests/pipe").c_str(), S_IRUSR | S_IWUSR);

    const auto files = findModels(places());

    ASSERT_EQ(files.size(), 1U);
    EXPECT_TRUE(files[0].name == "otter:1b" || files[0].name == "otter:latest") << files[0].name;
    EXPECT_EQ(files[0].size, 7U);
    EXPECT_EQ(files[0].path, home / (".ollama/models/blobs/sha256-" + digits));
}

TEST_F(ModelFinderTest, AModelOfAnotherMakerHasItsMakerInItsName) {
    const std::string manifest =
        R"({"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":"sha256:)" +
        std::string(64, 'c') + "\"}]}";
    write("store/blobs/sha256-" + std::string(64, 'c'));
    write("store/manifests/hub.example/river/otter/1b", manifest);
    environment["OLLAMA_MODELS"] = (home / "store").string();

    const auto files = findModels(places());

    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].name, "hub.example/river/otter:1b");
}

TEST_F(ModelFinderTest, AChangedFileIsAnotherOne) {
    const fs::path file = write(".local/share/Orvu/models/a.gguf", "one");
    const auto before = findModels(places());
    fs::last_write_time(file, fs::last_write_time(file) + std::chrono::nanoseconds{1000});
    const auto later = findModels(places());
    write(".local/share/Orvu/models/a.gguf", "three");
    const auto larger = findModels(places());

    ASSERT_EQ(before.size() + later.size() + larger.size(), 3U);
    EXPECT_NE(before[0], later[0]);
    EXPECT_NE(later[0].size, larger[0].size);
}

TEST_F(ModelFinderTest, AFolderWithoutEndGivesSomeThousandsOfFiles) {
    for (int i = 0; i < 6000; ++i) write(".local/share/Orvu/models/" + std::to_string(i) + ".gguf");

    const auto count = findModels(places()).size();

    EXPECT_GE(count, 1000U);
    EXPECT_LE(count, 5000U);
}

TEST_F(ModelFinderTest, LinksToFoldersLeadNowhere) {
    const fs::path models = home / ".local/share/Orvu/models";
    write(".local/share/Orvu/models/deep/a.gguf");
    fs::create_directory_symlink(models, models / "deep/again");
    fs::create_directory_symlink("/", models / "root");

    EXPECT_EQ(found().size(), 1U);
}

TEST(FreeMemoryTest, TheSystemTellsIt) { EXPECT_GT(freeMemory(), std::uint64_t{1} << 20); }

}  // namespace
}  // namespace orvu
