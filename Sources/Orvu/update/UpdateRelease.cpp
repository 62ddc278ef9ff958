#include "update/UpdateRelease.h"

#include "foundation/json/Json.h"

namespace orvu {

std::optional<UpdateRelease> UpdateRelease::parse(std::string_view manifest) {
    if (manifest.size() > longest) return std::nullopt;
    const auto document = JsonDocument::parse(manifest);
    if (!document) return std::nullopt;
    const auto root = document->root();
    const auto version = root.field("version");
    const auto build = root.field("build");
    const auto url = root.field("url");
    const auto sha256 = root.field("sha256");
    if (!version || !build || !url || !sha256) return std::nullopt;
    const auto name = version->text();
    const auto number = build->integer();
    auto address = url->url();
    const auto hash = sha256->text();
    if (!name || !number || !address || !hash) return std::nullopt;
    return UpdateRelease{std::string{*name}, *number, std::move(*address), std::string{*hash}};
}

}  // namespace orvu
