#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace orvu {

/// The tables of a GVariant database file, as far as names and plain texts in them go. Whatever
/// bytes it is given, it looks at nothing outside of them; `bytes` must outlive it.
class GvdbFile {
public:
    /// The names in a table, each with its value as it is serialised, without the frame that says
    /// its type.
    struct Value {
        std::string_view bytes;
        std::string_view type;  ///< as GVariant writes types: "s", "(xs)" ...
    };
    using Values = std::vector<std::pair<std::string_view, Value>>;

    explicit GvdbFile(std::string_view bytes) : bytes_(bytes) {}

    /// The values of the table `name` that stands in the root table, in the order of the file.
    /// None if it isn't there or the file is damaged.
    [[nodiscard]] Values valuesOf(std::string_view name) const;

private:
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    struct Item {
        std::string_view key;
        char type = 0;
        Range value;
    };

    [[nodiscard]] std::optional<std::uint32_t> number(std::size_t at) const;
    [[nodiscard]] std::optional<Range> pointer(std::size_t at) const;
    [[nodiscard]] std::optional<Range> root() const;
    [[nodiscard]] std::optional<Item> item(std::size_t at) const;
    [[nodiscard]] std::vector<Item> items(Range table) const;
    [[nodiscard]] std::optional<Value> value(Range range) const;

    std::string_view bytes_;
};

}  // namespace orvu
