#pragma once

#include "foundation/Url.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orvu {

/// The page in whose name something is loaded.
struct Initiator {
    /// What it lets the target know of its own address: all of it, or its origin. Nothing if it
    /// keeps it to itself; then nobody knows whose page it is, and every site is another one.
    std::optional<Url> referrer;

    friend bool operator==(const Initiator&, const Initiator&) = default;
};

/// What is to be loaded, and in whose name. A page may ask without an address.
struct UrlRequest {
    std::optional<Url> url;
    std::optional<Initiator> initiator = {};  ///< nothing if the person or the program asks
    std::optional<std::size_t> turn = {};     ///< for one that nobody waits for: the lowest first

    friend bool operator==(const UrlRequest&, const UrlRequest&) = default;
};

enum class NavigationType {
    linkActivated,  ///< by the person, not by a script
    formSubmitted,
    backForward,
    reload,
    formResubmitted,
    other,  ///< scripts, and loads that the program itself began
};

/// A navigation that a page or the user is about to make.
struct NavigationAction {
    UrlRequest request;  ///< in a page's name
    NavigationType navigationType = NavigationType::other;
    bool commandKey = false;  ///< the key for "in a new tab" was held
    int buttonNumber = 0;     ///< 1 left, 2 middle, 3 right; 0 without a pointer
    bool byPerson = false;    ///< by a gesture of theirs, or a load that the program itself began
};

/// The answer of a server, before its content is taken.
struct NavigationResponse {
    bool isForMainFrame = true;
    bool canShowMimeType = true;
    /// The header "Content-Disposition"; empty if there is none or the answer is not HTTP.
    std::string contentDisposition;
};

enum class NavigationPolicy { allow, cancel };
enum class ResponsePolicy { allow, download };

}  // namespace orvu
