#pragma once

#include "foundation/Observable.h"
#include "foundation/Signal.h"
#include "foundation/text/Translation.h"
#include "search/SiteText.h"

#include <string>
#include <string_view>

namespace orvu {

/// The address notch as its window knows it: whether its command bar shows, and what stands in
/// its field. Both are the window's, which may change them at any time. The text outlives the
/// closing: who opens the notch without setting it finds the old one.
class AddressNotch : public sigc::trackable {
public:
    /// What the field is for.
    static constexpr Phrase prompt = phrase("Search, type a site, or ask Kesto");

    /// See the function of the same name in `search/SiteText.h`.
    [[nodiscard]] static bool looksLikeSite(std::string_view text) {
        return orvu::looksLikeSite(text);
    }

    /// Both must outlive the notch.
    AddressNotch(Observable<bool>& commandOpen, Observable<std::string>& query);
    AddressNotch(const AddressNotch&) = delete;
    AddressNotch& operator=(const AddressNotch&) = delete;

    [[nodiscard]] bool isOpen() const { return commandOpen_.get(); }
    [[nodiscard]] const std::string& query() const { return query_.get(); }

    /// Shows the command bar with what stands in its field.
    void open();
    /// Shows the command bar with `query` in its field.
    void open(std::string_view query);
    void close();
    void setQuery(std::string_view query);
    /// Hands the text to the assistant, if there is one to take it.
    void ask();

    /// Calls `slot` once after each operation that changed something.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changes_.connect(slot);
    }
    /// Calls `slot` with each question for the assistant.
    sigc::connection connectAsked(const sigc::slot<void(const std::string&)>& slot) {
        return asked_.connect(slot);
    }

private:
    void changed();

    Observable<bool>& commandOpen_;
    Observable<std::string>& query_;
    ChangeSignal changes_;
    sigc::signal<void(const std::string&)> asked_;
};

}  // namespace orvu
