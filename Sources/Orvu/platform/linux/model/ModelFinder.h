#pragma once

#include "platform/model/ModelFile.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// Where programs that run language models keep their files.
struct ModelPlaces {
    /// A folder with files whose names end with ".gguf".
    struct Folder {
        std::filesystem::path path;
        int depth = 0;  ///< of the folders within it that are looked at too
    };

    std::vector<Folder> folders;
    std::vector<std::filesystem::path> ollamaStores;

    /// The value of an environment variable, or nothing.
    using Environment = std::function<std::optional<std::string>(const char* name)>;
    /// The usual places of this person and of the system. `own` is Orvu's folder for models.
    [[nodiscard]] static ModelPlaces usual(const Environment& environment,
                                           const std::filesystem::path& own);
    /// After the environment of this process.
    [[nodiscard]] static ModelPlaces usual(const std::filesystem::path& own);
};

/// The files that may be models, each once, however many names it has; names and sizes alone are
/// looked at, and Ollama's lists. Parts of models in several files and what reads pictures for a
/// model are left out. A store without end gives some thousands of files. For any thread.
[[nodiscard]] std::vector<ModelFile> findModels(const ModelPlaces& places);

/// Bytes that programs can still get without others losing theirs; 0 if the system doesn't tell.
[[nodiscard]] std::uint64_t freeMemory();

}  // namespace orvu
