#include "platform/model/ModelFile.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"
#include "platform/model/ChatRequest.h"

#include <algorithm>
#include <tuple>

namespace orvu {
namespace {

std::optional<KnownModel> decodedModel(const JsonValue& value) {
    const auto text = [&](const char* key) {
        const auto field = value.field(key);
        return field ? field->text() : std::nullopt;
    };
    const auto number = [&](const char* key) {
        const auto field = value.field(key);
        return field ? field->integer() : std::nullopt;
    };
    const auto path = text("path");
    const auto size = number("size");
    const auto changed = number("changed");
    const auto contextBytes = number("contextBytes");
    const auto contextTokens = number("contextTokens");
    const auto answers = value.field("answers");
    if (!path || path->empty() || !size || *size < 0 || !changed || !contextBytes ||
        *contextBytes < 0 || !contextTokens || *contextTokens < 0 || *contextTokens > UINT32_MAX ||
        !answers || !answers->boolean()) {
        return std::nullopt;
    }
    KnownModel model{.file = {.path = *path,
                              .size = static_cast<std::uint64_t>(*size),
                              .changed = *changed,
                              .name = std::string{text("place").value_or("")}},
                     .description = {.canAnswer = *answers->boolean(),
                                     .name = std::string{text("name").value_or("")},
                                     .contextBytes = static_cast<std::uint64_t>(*contextBytes),
                                     .contextTokens = static_cast<std::uint32_t>(*contextTokens)}};
    model.turn = std::max(number("turn").value_or(0), std::int64_t{0});
    return model;
}

}  // namespace

std::string shownName(const KnownModel& model) {
    if (!model.file.name.empty()) return model.file.name;
    if (!model.description.name.empty()) return model.description.name;
    return wellFormed(model.file.path.stem().string());
}

std::uint64_t ModelRoom::bearableSize() const {
    constexpr std::uint64_t readBytes = 6'000'000'000;  // a second and thread
    constexpr std::uint64_t pace = 4;                   // tokens a second
    return std::clamp(threads, 1U, 5U) * readBytes / pace;
}

bool ModelRoom::holds(const KnownModel& model) const {
    const auto most = freeMemory / 100 * memoryShare;
    const auto& description = model.description;
    constexpr auto wanted = static_cast<std::uint64_t>(ChatRequest::contextTokens);
    const auto tokens = description.contextTokens == 0
                            ? wanted
                            : std::min<std::uint64_t>(wanted, description.contextTokens);
    if (model.file.size > most ||
        description.contextBytes > most / std::max<std::uint64_t>(1, tokens)) {
        return false;
    }
    return model.file.size + description.contextBytes * tokens <= most;
}

std::optional<KnownModel> modelToRun(const std::vector<KnownModel>& models, const ModelRoom& room) {
    const auto rank = [&](const KnownModel& each) {
        const bool isBearable = each.file.size <= room.bearableSize();
        const auto size = static_cast<double>(each.file.size);
        return std::tuple{each.turn, isBearable, isBearable ? size : -size};
    };
    const KnownModel* chosen = nullptr;
    for (const auto& each : models) {
        if (!each.description.canAnswer || !room.holds(each)) continue;
        if (!chosen || rank(each) > rank(*chosen)) chosen = &each;
    }
    return chosen ? std::optional{*chosen} : std::nullopt;
}

std::string encodedModels(const std::vector<KnownModel>& models) {
    JsonWriter json;
    json.beginArray();
    for (const auto& each : models) {
        json.beginObject();
        json.key("path").value(each.file.path.string());
        json.key("size").value(static_cast<std::int64_t>(each.file.size));
        json.key("changed").value(each.file.changed);
        json.key("place").value(each.file.name);
        json.key("answers").value(each.description.canAnswer);
        json.key("name").value(each.description.name);
        json.key("contextBytes").value(static_cast<std::int64_t>(each.description.contextBytes));
        json.key("contextTokens").value(std::int64_t{each.description.contextTokens});
        json.key("turn").value(each.turn);
        json.endObject();
    }
    json.endArray();
    return std::move(json).finish().value_or("[]");
}

std::vector<KnownModel> decodedModels(std::string_view text) {
    std::vector<KnownModel> models;
    const auto document = JsonDocument::parse(text);
    const auto list = document ? document->root().array() : std::nullopt;
    if (!list) return models;
    for (const auto& each : *list) {
        if (auto model = decodedModel(each)) models.push_back(std::move(*model));
    }
    return models;
}

std::vector<std::string> modelsOfManifest(std::string_view json) {
    constexpr std::string_view kind = "application/vnd.ollama.image.model";
    constexpr std::string_view algorithm = "sha256:";
    constexpr std::size_t length = 64;  // digits
    std::vector<std::string> files;
    const auto document = JsonDocument::parse(json);
    const auto layers = document ? document->root().field("layers") : std::nullopt;
    const auto list = layers ? layers->array() : std::nullopt;
    if (!list) return files;
    for (const auto& each : *list) {
        const auto type = each.field("mediaType");
        const auto digest = each.field("digest");
        if (!type || type->text() != kind || !digest) continue;
        const auto text = digest->text().value_or("");
        if (!text.starts_with(algorithm) || text.size() != algorithm.size() + length) continue;
        const auto digits = text.substr(algorithm.size());
        if (digits.find_first_not_of("0123456789abcdef") != std::string_view::npos) continue;
        files.push_back("sha256-" + std::string{digits});
    }
    return files;
}

}  // namespace orvu
