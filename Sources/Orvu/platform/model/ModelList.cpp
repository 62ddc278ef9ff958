#include "platform/model/ModelList.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <tuple>

namespace orvu {
namespace {

constexpr std::size_t nameLimit = 512;     // bytes
constexpr std::size_t modelsLimit = 4096;  // entries that are read

/// Words in the names and families of models that give nothing but embeddings.
constexpr std::array<std::string_view, 8> embeddingWords{"embed", "bert", "minilm", "bge-",
                                                         "gte-",  "e5-",  "rerank", "paraphrase"};

std::string_view textOf(const JsonValue& object, std::string_view name) {
    const auto value = object.field(name);
    return value ? value->text().value_or("") : "";
}

std::optional<int> digits(std::string_view text, std::size_t at, std::size_t count) {
    if (at + count > text.size()) return std::nullopt;
    int value = 0;
    const auto* const begin = text.data() + at;
    const auto [stop, error] = std::from_chars(begin, begin + count, value);
    return error == std::errc{} && stop == begin + count && value >= 0 ? std::optional{value}
                                                                       : std::nullopt;
}

/// "Z", "+02:00" or "-07:00" in seconds.
std::optional<int> offset(std::string_view text) {
    if (text == "Z" || text == "z") return 0;
    if (text.size() != 6 || text[3] != ':' || (text[0] != '+' && text[0] != '-')) return {};
    const auto hours = digits(text, 1, 2);
    const auto minutes = digits(text, 4, 2);
    if (!hours || !minutes) return std::nullopt;
    return (text[0] == '-' ? -1 : 1) * (*hours * 3600 + *minutes * 60);
}

/// "2026-01-31T08:09:10.123456789+02:00"; the distant past for anything else.
Date dateOf(std::string_view text) {
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 5, 2);
    const auto day = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) return Date::distantPast();
    const std::chrono::year_month_day date{std::chrono::year{*year},
                                           std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    text.remove_prefix(19);
    double fraction = 0;
    if (text.starts_with('.')) {
        const auto end = std::min(text.find_first_not_of("0123456789", 1), text.size());
        const auto* const begin = text.data();
        std::from_chars(begin, begin + end, fraction, std::chars_format::fixed);
        text.remove_prefix(end);
    }
    const auto east = offset(text);
    if (!date.ok() || !east) return Date::distantPast();
    const auto days = std::chrono::sys_days{date}.time_since_epoch().count();
    return Date::fromUnixSeconds(static_cast<double>(days) * 86400 + *hour * 3600 + *minute * 60 +
                                 *second - *east + fraction);
}

bool isName(std::string_view name) {
    return !name.empty() && name.size() <= nameLimit && std::ranges::none_of(name, [](char each) {
        return static_cast<unsigned char>(each) < 0x20;
    });
}

bool namesEmbeddings(std::string_view text) {
    const std::string folded = lowercased(text);
    return std::ranges::any_of(embeddingWords, [&](auto word) { return folded.contains(word); });
}

/// Models that the server passes on to another computer.
bool isElsewhere(const JsonValue& entry, std::string_view name) {
    return !textOf(entry, "remote_host").empty() || !textOf(entry, "remote_model").empty() ||
           name.ends_with(":cloud") || name.ends_with("-cloud");
}

/// What a model can do, where the server tells it; else after its name and kind.
bool canAnswer(const JsonValue& entry, std::string_view name) {
    if (isElsewhere(entry, name)) return false;
    const auto list = entry.field("capabilities");
    if (const auto capabilities = list ? list->texts() : std::nullopt) {
        if (!capabilities->empty() && std::ranges::count(*capabilities, "completion") == 0)
            return false;
    }
    const auto details = entry.field("details");
    return !namesEmbeddings(name) && !namesEmbeddings(textOf(entry, "type")) &&
           !(details && namesEmbeddings(textOf(*details, "family")));
}

/// The entries of the list that an object has under a name, each read by `read`.
template <class Read>
std::optional<std::vector<ListedModel>> modelsIn(std::string_view body, std::string_view name,
                                                 Read read) {
    const auto document = JsonDocument::parse(body);
    const auto list = document ? document->root().field(name) : std::nullopt;
    const auto entries = list ? list->array() : std::nullopt;
    if (!entries) return std::nullopt;
    std::vector<ListedModel> models;
    for (const JsonValue& entry : *entries) {
        if (models.size() == modelsLimit) break;
        ListedModel model = read(entry);
        if (isName(model.name)) models.push_back(std::move(model));
    }
    return models;
}

ListedModel ollamaModel(const JsonValue& entry, std::string_view dateName) {
    auto name = textOf(entry, "model");
    if (name.empty()) name = textOf(entry, "name");
    return {.name = std::string{name},
            .date = dateOf(textOf(entry, dateName)),
            .canAnswer = canAnswer(entry, name)};
}

/// Some servers tell which of their models are loaded, in one of two ways.
ListedModel openAIModel(const JsonValue& entry) {
    const auto name = textOf(entry, "id");
    const auto created = entry.field("created");
    const auto seconds = created ? created->number() : std::nullopt;
    const auto status = entry.field("status");
    return {.name = std::string{name},
            .date = seconds ? Date::fromUnixSeconds(*seconds) : Date::distantPast(),
            .isLoaded = textOf(entry, "state") == "loaded" ||
                        (status && textOf(*status, "value") == "loaded"),
            .canAnswer = canAnswer(entry, name),
            .owner = std::string{textOf(entry, "owned_by")}};
}

}  // namespace

bool isOllamaVersion(std::string_view body) {
    const auto document = JsonDocument::parse(body);
    return document && !textOf(document->root(), "version").empty();
}

std::optional<std::vector<ListedModel>> ollamaModels(std::string_view body) {
    return modelsIn(body, "models",
                    [](const auto& entry) { return ollamaModel(entry, "modified_at"); });
}

std::optional<std::vector<ListedModel>> loadedOllamaModels(std::string_view body) {
    return modelsIn(body, "models", [](const auto& entry) {
        // Each use of a model puts off the time at which it is unloaded.
        ListedModel model = ollamaModel(entry, "expires_at");
        model.isLoaded = true;
        return model;
    });
}

std::optional<std::vector<ListedModel>> openAIModels(std::string_view body) {
    return modelsIn(body, "data", openAIModel);
}

std::optional<ListedModel> chosenModel(const std::vector<ListedModel>& models) {
    const ListedModel* chosen = nullptr;
    for (const ListedModel& each : models) {
        if (!each.canAnswer) continue;
        const bool isBetter = !chosen || std::tuple{each.isLoaded, each.date} >
                                             std::tuple{chosen->isLoaded, chosen->date};
        if (isBetter) chosen = &each;
    }
    return chosen ? std::optional{*chosen} : std::nullopt;
}

}  // namespace orvu
