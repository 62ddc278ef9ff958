#pragma once

#include "platform/model/EngineMessages.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A file on this computer that may be a model.
struct ModelFile {
    std::filesystem::path path;
    std::uint64_t size = 0;    ///< bytes
    std::int64_t changed = 0;  ///< nanoseconds since 1970
    std::string name = {};     ///< what its place calls it; empty if that is the file's own name

    friend bool operator==(const ModelFile&, const ModelFile&) = default;
};

/// A file whose head was read, so that it needn't be read again until it changes.
struct KnownModel {
    ModelFile file = {};
    ModelDescription description = {};
    /// Grows with each model that is used after another one; 0 for one that wasn't. It tells no time:
    /// a question of a private window leaves none behind.
    std::int64_t turn = 0;

    friend bool operator==(const KnownModel&, const KnownModel&) = default;
};

/// What a person reads as a model's name.
[[nodiscard]] std::string shownName(const KnownModel& model);

/// What this computer has to run a model with.
struct ModelRoom {
    std::uint64_t freeMemory = 0;  ///< bytes that programs can still get
    unsigned threads = 1;          ///< for the model

    /// The most of the free memory that a model may take, in hundredths.
    static constexpr std::uint64_t memoryShare = 60;
    /// A model says a token after it has read all of its file from memory once. A thread reads some
    /// 6 GB a second, and five of them as much as memory gives; four tokens a second are a slow
    /// reader's pace. A larger file than this is slower than that.
    [[nodiscard]] std::uint64_t bearableSize() const;
    /// Whether a model fits, with a context for our longest question.
    [[nodiscard]] bool holds(const KnownModel& model) const;
};

/// Of the models that can answer and fit, the one that was used last; else the largest of those that
/// answer at a bearable speed; else the smallest. Among equals the first; nothing if none fits.
[[nodiscard]] std::optional<KnownModel> modelToRun(const std::vector<KnownModel>& models,
                                                   const ModelRoom& room);

/// The models as they are remembered, and back; what makes no sense is left out.
[[nodiscard]] std::string encodedModels(const std::vector<KnownModel>& models);
[[nodiscard]] std::vector<KnownModel> decodedModels(std::string_view text);

/// The file names of the models in one of Ollama's manifests ("sha256-…"), in their order: what its
/// layers of that kind name. None of what is no manifest.
[[nodiscard]] std::vector<std::string> modelsOfManifest(std::string_view json);

}  // namespace orvu
