#include "core/Records.h"

namespace orvu {

std::optional<Visit> Visit::decode(const JsonValue& value) { return decodeDatedPage<Visit>(value); }

void Visit::encode(JsonWriter& writer) const { encodeDatedPage(writer, *this); }

std::optional<SavedTab> SavedTab::decode(const JsonValue& value) {
    auto url = value.field("url").and_then(&JsonValue::url);
    const auto pinned = value.field("pinned").and_then(&JsonValue::boolean);
    const auto written = value.field("group");
    const auto group = written.and_then(&JsonValue::uuid);
    if (!url || !pinned || (written && !group)) return std::nullopt;
    return SavedTab{std::move(*url), *pinned, group};
}

void SavedTab::encode(JsonWriter& writer) const {
    writer.beginObject().key("url").value(url).key("pinned").value(pinned);
    if (group) writer.key("group").value(*group);
    writer.endObject();
}

std::optional<Parked> Parked::decode(const JsonValue& value) {
    auto id = value.field("id").and_then(&JsonValue::uuid);
    auto url = value.field("url").and_then(&JsonValue::url);
    const auto title = value.field("title").and_then(&JsonValue::text);
    if (!id || !url || !title) return std::nullopt;
    return Parked{*id, std::move(*url), std::string{*title}};
}

void Parked::encode(JsonWriter& writer) const {
    writer.beginObject().key("id").value(id).key("url").value(url);
    writer.key("title").value(title).endObject();
}

}  // namespace orvu
