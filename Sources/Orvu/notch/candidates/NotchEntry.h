#pragma once

#include "foundation/Url.h"
#include "foundation/Uuid.h"

#include <string>
#include <variant>

namespace orvu {

/// Opens what `text` leads to, in the tab in front; nothing if it is blank.
struct SearchFor {
    std::string text;
    friend bool operator==(const SearchFor&, const SearchFor&) = default;
};
/// Brings a tab to the front.
struct SwitchToTab {
    Uuid id;
    friend bool operator==(const SwitchToTab&, const SwitchToTab&) = default;
};
/// Loads an address as it stands, in the tab in front.
struct LoadAddress {
    Url url;
    friend bool operator==(const LoadAddress&, const LoadAddress&) = default;
};
/// What choosing a row of the notch does.
using NotchAction = std::variant<SearchFor, SwitchToTab, LoadAddress>;

/// One candidate row under the notch's field.
struct NotchEntry {
    struct SiteIcon {
        std::string host;
        friend bool operator==(const SiteIcon&, const SiteIcon&) = default;
    };
    enum class Sign { search, recent };
    using Icon = std::variant<SiteIcon, Sign>;

    std::string id;       ///< unique within a list
    std::string section;  ///< the heading under which it stands
    Icon icon;
    std::string typed;   ///< what equals the typed text, in the candidate's own letter case
    std::string rest;    ///< the remainder, or the whole title
    std::string detail;  ///< quiet text behind; may be empty
    std::string hint;    ///< text at the right end; may be empty
    NotchAction action;

    friend bool operator==(const NotchEntry&, const NotchEntry&) = default;
};

}  // namespace orvu
