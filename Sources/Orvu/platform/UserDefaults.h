#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The program's named values. A write is atomic and has taken place when the call returns. One
/// that the system refuses (a full disk) counts all the same, in memory, and is written together
/// with the next one that the system takes. Each reader gives nothing for a key without a value,
/// and for a value of a type that it does not take.
class UserDefaults {
public:
    /// While one lives, writes wait; those of the outermost take place together at its end, all
    /// or none. Reads see them at once.
    class Batch {
    public:
        explicit Batch(UserDefaults& defaults) : defaults_(defaults) { defaults_.beginBatch(); }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        ~Batch() { defaults_.endBatch(); }

    private:
        UserDefaults& defaults_;
    };

    virtual ~UserDefaults() = default;

    /// Whether the key has a value of any type.
    [[nodiscard]] virtual bool hasObject(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::string> data(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::string> string(std::string_view key) const = 0;
    /// A number, its fraction cut off; 0 or 1 for a boolean.
    [[nodiscard]] virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<double> number(std::string_view key) const = 0;
    /// True for a number other than 0 and for the texts "YES", "true" and "1"; false for every
    /// other number or text.
    [[nodiscard]] virtual std::optional<bool> boolean(std::string_view key) const = 0;

    virtual void setData(std::string_view key, std::string_view bytes) = 0;
    virtual void setString(std::string_view key, std::string_view text) = 0;
    virtual void setInteger(std::string_view key, std::int64_t number) = 0;
    virtual void setNumber(std::string_view key, double number) = 0;
    void setBoolean(std::string_view key, bool flag) { setInteger(key, flag ? 1 : 0); }
    virtual void remove(std::string_view key) = 0;

    /// Says that nobody could read what stands under the key. It stays there, and is kept aside
    /// for a while when another value replaces it.
    virtual void setAside(std::string_view key) = 0;

private:
    virtual void beginBatch() = 0;
    virtual void endBatch() = 0;
};

}  // namespace orvu
