#pragma once

#include "foundation/Date.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A model that a server lists.
struct ListedModel {
    std::string name = {};
    Date date = Date::distantPast();  ///< when it was used or changed
    bool isLoaded = false;
    bool canAnswer = true;   ///< it does more than embed, and runs on this computer
    std::string owner = {};  ///< who serves it, as the server says: "llamacpp", "vllm"

    friend bool operator==(const ListedModel&, const ListedModel&) = default;
};

/// Whether this is what Ollama answers about its version.
[[nodiscard]] bool isOllamaVersion(std::string_view body);
/// The models of a server, from the answers about all of them: /api/tags and /v1/models. Nothing if
/// this is no such answer; entries without a name that can be asked for are left out.
[[nodiscard]] std::optional<std::vector<ListedModel>> ollamaModels(std::string_view body);
[[nodiscard]] std::optional<std::vector<ListedModel>> openAIModels(std::string_view body);
/// The models that Ollama has in memory, from its answer about these: /api/ps.
[[nodiscard]] std::optional<std::vector<ListedModel>> loadedOllamaModels(std::string_view body);

/// The model to ask: one that is loaded, else any, the latest by date; among equals the first.
/// Nothing if none can answer.
[[nodiscard]] std::optional<ListedModel> chosenModel(const std::vector<ListedModel>& models);

}  // namespace orvu
