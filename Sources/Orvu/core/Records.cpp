#include "core/Records.h"

namespace orvu {

std::optional<Visit> Visit::decode(const JsonValue& value) {
    auto id = value.field("id").and_then(&JsonValue::uuid);
    auto url = value.field("url").and_then(&JsonValue::url);
    const auto title = value.field("title").and_then(&JsonValue::text);
    const auto date = value.field("date").and_then(&JsonValue::date);
    if (!id || !url || !title || !date) return std::nullopt;
    return Visit{*id, std::move(*url), std::string{*title}, *date};
}

void Visit::encode(JsonWriter& writer) const {
    writer.beginObject().key("id").value(id).key("url").value(url);
    writer.key("title").value(title).key("date").value(date).endObject();
}

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
