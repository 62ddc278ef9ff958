#include "platform/linux/model/ModelFinder.h"

#include "foundation/text/Text.h"
#include "platform/linux/files/FileText.h"

#include <sys/stat.h>

#include <charconv>
#include <cstdlib>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

namespace fs = std::filesystem;

constexpr int entryLimit = 5000;              // in a folder with those within it
constexpr std::size_t manifestLimit = 65536;  // bytes

bool isPart(std::string_view name) { return name.contains("-of-0"); }
bool readsPictures(std::string_view name) { return name.contains("mmproj"); }

bool isModelName(const fs::path& file) {
    const std::string name = lowercased(file.filename().string());
    return name.ends_with(".gguf") && !isPart(name) && !readsPictures(name);
}

/// Calls `take` with each file below a folder. Links to files are followed, links to folders aren't.
void eachFile(const fs::path& folder, int depth, const std::function<void(const fs::path&)>& take) {
    std::error_code failure;
    const auto options = fs::directory_options::skip_permission_denied;
    fs::recursive_directory_iterator at{folder, options, failure};
    for (int count = 0; !failure && at != fs::end(at) && count < entryLimit; ++count) {
        std::error_code ignored;
        if (at.depth() >= depth) at.disable_recursion_pending();
        if (!at->is_directory(ignored)) take(at->path());
        at.increment(failure);
    }
}

class Found {
public:
    void add(const fs::path& path, std::string name) {
        struct stat facts{};
        if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return;
        if (!seen_.emplace(facts.st_dev, facts.st_ino).second) return;
        constexpr std::int64_t nano = 1'000'000'000;
        files_.push_back({.path = path,
                          .size = static_cast<std::uint64_t>(facts.st_size),
                          .changed = facts.st_mtim.tv_sec * nano + facts.st_mtim.tv_nsec,
                          .name = std::move(name)});
    }
    [[nodiscard]] std::vector<ModelFile> files() && { return std::move(files_); }

private:
    std::set<std::pair<dev_t, ino_t>> seen_;
    std::vector<ModelFile> files_;
};

/// As Ollama names a model: its name and tag, before them who made it and where it is from, unless
/// these are the usual ones.
std::string ollamaName(const fs::path& manifest, const fs::path& manifests) {
    std::vector<std::string> parts;
    for (const auto& each : manifest.lexically_relative(manifests)) parts.push_back(each.string());
    if (parts.size() != 4) return "";
    std::string name = parts[2] + ":" + parts[3];
    if (parts[1] != "library") name = parts[1] + "/" + name;
    if (parts[0] != "registry.ollama.ai") name = parts[0] + "/" + name;
    return wellFormed(name);
}

void addOllamaStore(const fs::path& store, Found& found) {
    constexpr int tags = 3;  // folders above a tag: registry, maker, model
    const fs::path manifests = store / "manifests";
    eachFile(manifests, tags, [&](const fs::path& manifest) {
        struct stat facts{};  // a pipe would never give an end
        if (stat(manifest.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return;
        const auto text = fileText(manifest, manifestLimit);
        if (!text) return;
        for (const auto& each : modelsOfManifest(*text)) {
            found.add(store / "blobs" / each, ollamaName(manifest, manifests));
        }
    });
}

}  // namespace

ModelPlaces ModelPlaces::usual(const Environment& environment, const fs::path& own) {
    const auto folder = [&](const char* name) {
        const fs::path given = environment(name).value_or("");
        return given.is_absolute() ? given : fs::path{};
    };
    const auto either = [](const fs::path& first, const fs::path& second) {
        return first.empty() ? second : first;
    };
    const fs::path home = folder("HOME");
    if (home.empty()) return {.folders = {{own}}, .ollamaStores = {}};
    const fs::path data = either(folder("XDG_DATA_HOME"), home / ".local/share");
    const fs::path caches = either(folder("XDG_CACHE_HOME"), home / ".cache");
    const fs::path configuration = either(folder("XDG_CONFIG_HOME"), home / ".config");
    const fs::path huggingFace =
        either(folder("HF_HUB_CACHE"), either(folder("HF_HOME"), caches / "huggingface") / "hub");
    return {.folders = {{own, 1},
                        {home / ".lmstudio/models", 2},
                        {caches / "lm-studio/models", 2},
                        {either(folder("LLAMA_CACHE"), caches / "llama.cpp"), 1},
                        {huggingFace, 4},  // model, "snapshots", version, folder
                        {data / "nomic.ai/GPT4All", 0},
                        {data / "Jan/data/llamacpp/models", 3},
                        {configuration / "Jan/data/llamacpp/models", 3},
                        {home / "jan/models", 3}},
            .ollamaStores = {either(folder("OLLAMA_MODELS"), home / ".ollama/models"),
                             "/usr/share/ollama/.ollama/models", "/var/lib/ollama/models",
                             "/var/lib/ollama/.ollama/models"}};
}

ModelPlaces ModelPlaces::usual(const fs::path& own) {
    return usual(
        [](const char* name) {
            const char* const value = std::getenv(name);
            return value ? std::optional<std::string>{value} : std::nullopt;
        },
        own);
}

std::vector<ModelFile> findModels(const ModelPlaces& places) {
    Found found;
    for (const auto& [folder, depth] : places.folders) {
        eachFile(folder, depth, [&](const fs::path& file) {
            if (isModelName(file)) found.add(file, "");
        });
    }
    for (const auto& store : places.ollamaStores) addOllamaStore(store, found);
    return std::move(found).files();
}

std::uint64_t freeMemory() {
    constexpr std::string_view key = "MemAvailable:";
    const std::string text = fileText("/proc/meminfo", 65536).value_or("");
    const auto at = text.find(key);
    if (at == std::string::npos) return 0;
    const auto digits = text.find_first_of("0123456789", at);
    if (digits == std::string::npos) return 0;
    std::uint64_t kibibytes = 0;
    std::from_chars(text.data() + digits, text.data() + text.size(), kibibytes);
    return kibibytes * 1024;
}

}  // namespace orvu
