#include "notch/AddressNotch.h"

#include <utility>

namespace orvu {

void AddressNotch::open() {
    const ChangeSignal::Scope scope{changes_};
    setOpen(true);
}

void AddressNotch::open(std::string_view query) {
    const ChangeSignal::Scope scope{changes_};
    setQuery(query);
    setOpen(true);
}

void AddressNotch::close() {
    const ChangeSignal::Scope scope{changes_};
    setOpen(false);
}

void AddressNotch::setQuery(std::string_view query) {
    const ChangeSignal::Scope scope{changes_};
    if (query == query_) return;
    query_ = query;
    changes_.note();
}

void AddressNotch::setOpen(bool open) {
    if (std::exchange(isOpen_, open) != open) changes_.note();
}

}  // namespace orvu
