#pragma once

#include "notch/AddressNotchBody.h"
#include "support/StoreWorld.h"

#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// A store, its notch, and a search engine that answers when a test says so.
class NotchBodyTest : public StoreTest {
protected:
    using Entry = AddressNotchBody::Entry;

    /// Makes the body of the tab in front, as the view does when that tab changes.
    void makeBody() {
        body = std::make_unique<AddressNotchBody>(notch, store, store->active(), snapshot,
                                                  world.services);
    }
    /// The text becomes `text`, with the caret behind it.
    void type(const std::string& text) {
        notch.setQuery(text);
        body->setCaretAtEnd(true);
    }
    /// Lets the engine answer the open request for `text`, after the pause.
    bool suggest(const std::string& text, const Strings& predictions) {
        world.loop.advance(SearchSuggester::debounce);
        JsonWriter writer;
        writer.beginArray().value(text).beginArray();
        for (const auto& each : predictions) writer.value(each);
        writer.endArray().endArray();
        const auto address = Prefs::suggestURL(Prefs::engine(world.defaults), text);
        const bool asked =
            engineHttp.answer(address->absoluteString(), 200, *std::move(writer).finish());
        world.loop.advance({});
        return asked;
    }
    [[nodiscard]] Strings titles() const {
        Strings result;
        for (const Entry& entry : body->entries()) result.push_back(entry.typed + entry.rest);
        return result;
    }

    FakeHttpSession& engineHttp = world.suggestionRequests;
    std::shared_ptr<BrowserStore> store = openStore();
    AddressNotch notch;
    NotchSnapshot snapshot;
    std::unique_ptr<AddressNotchBody> body;
};

}  // namespace orvu
