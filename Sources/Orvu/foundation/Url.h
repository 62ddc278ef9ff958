#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// An address, kept exactly as it was written: no lower-casing, no escaping, no rewriting. Two
/// addresses are equal when their texts are. The parts follow the generic syntax of RFC 3986,
/// with letters outside ASCII allowed everywhere behind the scheme.
class Url {
public:
    /// Reads `text` as an address, absolute or relative. Nothing if it is empty, is no UTF-8,
    /// holds a blank or a control character (invisible direction marks included), or has a host
    /// with stray brackets or a port that is no number.
    [[nodiscard]] static std::optional<Url> parse(std::string_view text);

    [[nodiscard]] const std::string& absoluteString() const { return text_; }
    /// The scheme as written; empty for a relative address.
    [[nodiscard]] std::string_view scheme() const { return part(0, schemeEnd_); }
    /// The host with its percent escapes decoded and without the brackets of an IPv6 address;
    /// nothing if there is none or if it is empty.
    [[nodiscard]] std::optional<std::string> host() const;
    /// The path with those percent escapes decoded that give valid UTF-8.
    [[nodiscard]] std::string path() const;
    /// What stands between "?" and "#", as written; nothing without a "?".
    [[nodiscard]] std::optional<std::string_view> query() const;
    /// The value of the first item of the query with this name, its percent escapes decoded. A
    /// "+" stays. Nothing if there is no such item, or if that one has no "=".
    [[nodiscard]] std::optional<std::string> queryItem(std::string_view name) const;
    /// Whether one of the query's items has this name and this value, both decoded.
    [[nodiscard]] bool hasQueryItem(std::string_view name, std::string_view value) const;

    friend bool operator==(const Url& a, const Url& b) { return a.text_ == b.text_; }

private:
    explicit Url(std::string text) : text_(std::move(text)) {}
    bool readAuthority(std::uint32_t begin, std::uint32_t end);
    [[nodiscard]] std::string_view part(std::uint32_t begin, std::uint32_t end) const {
        return std::string_view{text_}.substr(begin, end - begin);
    }

    std::string text_;
    std::uint32_t schemeEnd_ = 0;
    std::uint32_t hostBegin_ = 0;
    std::uint32_t hostEnd_ = 0;
    std::uint32_t pathBegin_ = 0;
    std::uint32_t pathEnd_ = 0;
    std::uint32_t queryEnd_ = 0;  ///< equals `pathEnd_` without a query
};

/// Decodes percent escapes. An escape, or a run of them, that gives no valid UTF-8 stays as it is.
[[nodiscard]] std::string percentDecoded(std::string_view text);

/// Which characters `percentEncoded` leaves as they are, letters, digits and "-._~" apart.
enum class QueryCharacters {
    bangQuery,  ///< what a query may hold, without "&", "+", "=", "?" and "#"
    itemValue,  ///< what a query may hold, without "&", "=", ";" and "#"; a "+" stays
};
/// Writes each other byte of `text` as "%XX".
[[nodiscard]] std::string percentEncoded(std::string_view text, QueryCharacters allowed);

/// The host of `url` with every "www." deleted, wherever it stands; empty without a host.
[[nodiscard]] std::string siteName(const Url& url);
/// Whether the scheme, in any case of letters, is "http" or "https".
[[nodiscard]] bool isWebUrl(const Url& url);

}  // namespace orvu

template <>
struct std::hash<orvu::Url> {
    std::size_t operator()(const orvu::Url& url) const noexcept {
        return std::hash<std::string>{}(url.absoluteString());
    }
};
