#pragma once

#include "platform/UserDefaults.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace orvu {

/// Named values in memory. It keeps a list of the keys written, and can refuse to write.
class FakeUserDefaults : public UserDefaults {
public:
    struct Data {
        std::string bytes;
        friend bool operator==(const Data&, const Data&) = default;
    };
    using Value = std::variant<Data, std::string, std::int64_t, double>;

    [[nodiscard]] bool hasObject(std::string_view key) const override {
        return values.contains(key);
    }
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override {
        const auto* const value = find<Data>(key);
        return value ? std::optional{value->bytes} : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> string(std::string_view key) const override {
        const auto* const value = find<std::string>(key);
        return value ? std::optional{*value} : std::nullopt;
    }
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override {
        if (const auto* const whole = find<std::int64_t>(key)) return *whole;
        const auto* const real = find<double>(key);
        return real ? std::optional{static_cast<std::int64_t>(*real)} : std::nullopt;
    }
    [[nodiscard]] std::optional<double> number(std::string_view key) const override {
        if (const auto* const whole = find<std::int64_t>(key)) return static_cast<double>(*whole);
        const auto* const real = find<double>(key);
        return real ? std::optional{*real} : std::nullopt;
    }
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override {
        if (const auto* const text = find<std::string>(key)) {
            return *text == "YES" || *text == "true" || *text == "1";
        }
        const auto real = number(key);
        return real ? std::optional{*real != 0} : std::nullopt;
    }

    void setData(std::string_view key, std::string_view bytes) override {
        set(key, Data{std::string{bytes}});
    }
    void setString(std::string_view key, std::string_view text) override {
        set(key, std::string{text});
    }
    void setInteger(std::string_view key, std::int64_t number) override { set(key, number); }
    void setNumber(std::string_view key, double number) override { set(key, number); }
    void remove(std::string_view key) override {
        removed.emplace_back(key);
        if (const auto found = values.find(key); found != values.end()) values.erase(found);
    }

    void setAside(std::string_view key) override { doubted.emplace_back(key); }

    std::map<std::string, Value, std::less<>> values;
    std::vector<std::string> written;       ///< the key of each write, in order
    std::vector<std::string> removed;       ///< the key of each removal, in order
    std::vector<std::string> doubted;       ///< the key of each value to set aside, in order
    bool diskFull = false;                  ///< writes have no effect
    int batches = 0;                        ///< how many outermost batches ended
    std::vector<std::string> writtenAlone;  ///< the key of each write outside any batch

private:
    void beginBatch() override { ++depth_; }
    void endBatch() override {
        if (--depth_ == 0) ++batches;
    }
    template <class T>
    [[nodiscard]] const T* find(std::string_view key) const {
        const auto found = values.find(key);
        return found != values.end() ? std::get_if<T>(&found->second) : nullptr;
    }
    void set(std::string_view key, Value value) {
        if (diskFull) return;
        written.emplace_back(key);
        if (depth_ == 0) writtenAlone.emplace_back(key);
        values.insert_or_assign(std::string{key}, std::move(value));
    }

    int depth_ = 0;
};

}  // namespace orvu
