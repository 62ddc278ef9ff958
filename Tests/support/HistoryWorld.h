#pragma once

#include "support/StoreWorld.h"

#include <chrono>

namespace orvu {

/// A fixture with visits of any time, stored or imported.
class HistoryTest : public StoreTest {
protected:
    [[nodiscard]] Visit visitAt(std::string_view address, Date date) const {
        return {Uuid::random(), url(address), "Title", date};
    }
    [[nodiscard]] Visit visitBefore(std::string_view address, std::chrono::seconds ago) const {
        return visitAt(address, world.loop.now().after(-ago));
    }
    [[nodiscard]] Strings storedVisits() const {
        const auto stored = world.storedRecords<Visit>("browserVisits");
        return stored ? addresses(*stored) : Strings{"unreadable"};
    }
    int import(const std::vector<Visit>& visits) {
        return BrowserStore::importVisits(visits, Profile::personal(), world.defaults,
                                          world.notifications);
    }
};

}  // namespace orvu
