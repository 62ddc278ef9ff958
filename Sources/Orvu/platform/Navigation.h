#pragma once

#include "foundation/Url.h"

#include <optional>
#include <string>

namespace orvu {

/// What a page asks to load. A request may come without an address.
struct UrlRequest {
    std::optional<Url> url;

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
    UrlRequest request;
    NavigationType navigationType = NavigationType::other;
    bool commandKey = false;  ///< the key for "in a new tab" was held
    int buttonNumber = 0;     ///< 1 left, 2 middle, 3 right; 0 without a pointer
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
