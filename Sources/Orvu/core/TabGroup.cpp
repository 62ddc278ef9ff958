#include "core/TabGroup.h"

namespace orvu {

int TabGroup::wrappedColor(std::int64_t number) {
    constexpr auto count = static_cast<std::int64_t>(groupColors.size());
    return static_cast<int>((number % count + count) % count);
}

std::optional<TabGroup> TabGroup::decode(const JsonValue& value) {
    const auto id = value.field("id").and_then(&JsonValue::uuid);
    const auto name = value.field("name").and_then(&JsonValue::text);
    const auto color = value.field("color").and_then(&JsonValue::integer);
    const auto collapsed = value.field("collapsed").and_then(&JsonValue::boolean);
    if (!id || !name || !color || !collapsed) return std::nullopt;
    return TabGroup{*id, std::string{*name}, wrappedColor(*color), *collapsed};
}

void TabGroup::encode(JsonWriter& writer) const {
    writer.beginObject().key("id").value(id).key("name").value(name);
    writer.key("color").value(static_cast<std::int64_t>(color));
    writer.key("collapsed").value(collapsed).endObject();
}

}  // namespace orvu
