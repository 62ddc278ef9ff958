#pragma once

#include "fakes/FakeSuggestions.h"
#include "notch/AddressNotchBody.h"
#include "support/OwnNotch.h"
#include "support/StoreWorld.h"

#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// A store and its notch, with predictions that come when a test says so.
class NotchBodyTest : public StoreTest {
protected:
    using Entry = AddressNotchBody::Entry;

    /// Makes the body of the tab in front, as the view does when that tab changes.
    void makeBody() {
        auto made = std::make_unique<FakeSuggestions>();
        suggestions = made.get();
        makeBody(std::move(made));
    }
    void makeBody(std::unique_ptr<Suggestions> ofBody) {
        body = std::make_unique<AddressNotchBody>(notch, store, store->active(), snapshot,
                                                  world.services, std::move(ofBody));
    }
    /// The text becomes `text`, with the caret behind it.
    void type(const std::string& text) {
        notch.setQuery(text);
        body->setCaretAtEnd(true);
    }
    [[nodiscard]] Strings titles() const {
        Strings result;
        for (const Entry& entry : body->entries()) result.push_back(entry.typed + entry.rest);
        return result;
    }

    std::shared_ptr<BrowserStore> store = openStore();
    const Settings& settings = world.services.settings();
    OwnNotch notch;
    NotchSnapshot snapshot;
    std::unique_ptr<AddressNotchBody> body;
    FakeSuggestions* suggestions = nullptr;  ///< of the body that `makeBody` made last
};

}  // namespace orvu
