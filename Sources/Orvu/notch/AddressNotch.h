#pragma once

#include "foundation/Signal.h"
#include "search/SiteText.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvu {

/// The address notch as its window knows it: whether its command bar shows, and what stands in
/// its field. The text outlives the closing: who opens the notch without setting it finds the old
/// one.
class AddressNotch {
public:
    /// What the field is for.
    static constexpr std::string_view prompt = "Search, type a site, or ask Kesto";

    /// See the function of the same name in `search/SiteText.h`.
    [[nodiscard]] static bool looksLikeSite(std::string_view text) {
        return orvu::looksLikeSite(text);
    }

    [[nodiscard]] bool isOpen() const { return isOpen_; }
    [[nodiscard]] const std::string& query() const { return query_; }

    /// Shows the command bar with what stands in its field.
    void open();
    /// Shows the command bar with `query` in its field.
    void open(std::string_view query);
    void close();
    void setQuery(std::string_view query);

    /// Hands a question to the assistant. While there is none to take it, nothing is set.
    std::function<void(const std::string&)> onAsk;

    /// Calls `slot` once after each operation that changed something.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changes_.connect(slot);
    }

private:
    void setOpen(bool open);

    bool isOpen_ = false;
    std::string query_;
    ChangeSignal changes_;
};

}  // namespace orvu
