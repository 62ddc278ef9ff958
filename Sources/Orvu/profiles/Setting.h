#pragma once

#include "platform/UserDefaults.h"
#include "profiles/SettingsKeys.h"

#include <sigc++/sigc++.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvu {

/// How settings of a type are stored. `fromTable` takes what the table of keys names for a key
/// without a value; `read` gives that, its last argument, where nothing of the type is stored.
template <class T>
struct SettingFormat;

/// As `Prefs::boolean` reads them.
template <>
struct SettingFormat<bool> {
    [[nodiscard]] static bool fromTable(std::string_view unset);
    [[nodiscard]] static bool read(const UserDefaults& defaults, std::string_view key, bool unset);
    static void write(UserDefaults& defaults, std::string_view key, bool value);
};

template <>
struct SettingFormat<std::int64_t> {
    [[nodiscard]] static std::int64_t fromTable(std::string_view unset);
    [[nodiscard]] static std::int64_t read(const UserDefaults& defaults, std::string_view key,
                                           std::int64_t unset);
    static void write(UserDefaults& defaults, std::string_view key, std::int64_t value);
};

/// A stored number that is not finite counts as none.
template <>
struct SettingFormat<double> {
    [[nodiscard]] static double fromTable(std::string_view unset);
    [[nodiscard]] static double read(const UserDefaults& defaults, std::string_view key,
                                     double unset);
    static void write(UserDefaults& defaults, std::string_view key, double value);
};

/// The empty text where there is none.
template <>
struct SettingFormat<std::string> {
    [[nodiscard]] static std::string fromTable(std::string_view) { return {}; }
    [[nodiscard]] static std::string read(const UserDefaults& defaults, std::string_view key,
                                          const std::string& unset);
    static void write(UserDefaults& defaults, std::string_view key, const std::string& value);
};

/// For an enumeration with a table, whose rows have the enumerator as their member `value` and the
/// text that is stored as `rawValue`. A text that is not in the table counts as none.
template <const auto& table, auto value>
struct RawValueFormat {
    using Row = std::remove_cvref_t<decltype(table[0])>;
    using Value = std::remove_cvref_t<decltype(table[0].*value)>;

    [[nodiscard]] static Value fromTable(std::string_view unset) { return named(unset).value(); }
    [[nodiscard]] static Value read(const UserDefaults& defaults, std::string_view key,
                                    Value unset) {
        return named(defaults.string(key).value_or("")).value_or(unset);
    }
    static void write(UserDefaults& defaults, std::string_view key, Value chosen) {
        defaults.setString(key, std::ranges::find(table, chosen, value)->rawValue);
    }

private:
    [[nodiscard]] static std::optional<Value> named(std::string_view text) {
        const auto found = std::ranges::find(table, text, &Row::rawValue);
        if (found == std::ranges::end(table)) return std::nullopt;
        return (*found).*value;
    }
};

/// One named value that is the same for all profiles and windows. It stands in the user defaults
/// alone, is read from there each time, and distrusted.
template <class T>
class Setting {
public:
    /// `defaults` must outlive this.
    Setting(UserDefaults& defaults, const SettingKey& key)
        : defaults_(defaults), key_(key.name), unset_(SettingFormat<T>::fromTable(key.unset)) {}
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    [[nodiscard]] T get() const { return SettingFormat<T>::read(defaults_, key_, unset_); }
    /// Whether anything is stored, of whatever type.
    [[nodiscard]] bool isSet() const { return defaults_.hasObject(key_); }

    /// Writes `value`, even where it counts already, and signals if another one counts afterwards
    /// than before.
    void set(const T& value) {
        const T before = get();
        SettingFormat<T>::write(defaults_, key_, value);
        if (get() != before) changed_.emit();  // last: an observer may call straight back
    }

    /// Calls `slot` after each change, whoever made it.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    UserDefaults& defaults_;
    const std::string_view key_;
    const T unset_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
