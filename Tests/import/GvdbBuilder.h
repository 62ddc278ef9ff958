#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvu {

/// Writes a GVariant database file with one level of tables, as GNOME Web's bookmarks have it.
class GvdbBuilder {
public:
    using Entries = std::vector<std::pair<std::string, std::string>>;

    GvdbBuilder() { bytes_.assign(24, '\0'); }

    /// A value with the frame that says its type.
    [[nodiscard]] static std::string framed(std::string_view value, std::string_view type) {
        std::string result{value};
        result.push_back('\0');
        return result.append(type);
    }
    /// A bookmark as present versions write it: when it was made, its title, and more.
    [[nodiscard]] static std::string bookmark(std::string_view title) {
        std::string value(8, '\x11');
        value.append(title).push_back('\0');
        return framed(value + "some-id" + std::string(20, '\0'), "(xssdbas)");
    }
    void addTable(std::string name, const Entries& values) {
        std::vector<Item> items;
        for (const auto& [key, value] : values) items.push_back({key, 'v', append(value)});
        tables_.push_back({std::move(name), 'H', table(items)});
    }
    [[nodiscard]] std::string finish() && {
        const auto [begin, end] = table(tables_);
        bytes_.replace(0, 8, "GVariant");
        bytes_.replace(16, 8, number(begin) + number(end));
        return std::move(bytes_);
    }

private:
    using Range = std::pair<std::size_t, std::size_t>;
    struct Item {
        std::string key;
        char type;
        Range value;
    };

    static std::string number(std::size_t value, int bytes = 4) {
        std::string result;
        for (int i = 0; i < bytes; ++i) result.push_back(static_cast<char>(value >> (8 * i)));
        return result;
    }
    Range append(std::string_view text) {
        const std::size_t begin = bytes_.size();
        bytes_.append(text);
        return {begin, bytes_.size()};
    }
    Range table(const std::vector<Item>& items) {
        // One word of a filter that lets all pass, and one bucket.
        std::string text = number(1 | 5U << 27) + number(1) + number(0xFFFFFFFF) + number(0);
        for (const Item& item : items) {
            const std::size_t key = append(item.key).first;
            text += number(0) + number(0xFFFFFFFF) + number(key) + number(item.key.size(), 2) +
                    item.type + '\0' + number(item.value.first) + number(item.value.second);
        }
        return append(text);
    }

    std::string bytes_;
    std::vector<Item> tables_;
};

}  // namespace orvu
