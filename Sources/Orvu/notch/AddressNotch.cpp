#include "notch/AddressNotch.h"

namespace orvu {

AddressNotch::AddressNotch(Observable<bool>& commandOpen, Observable<std::string>& query)
    : commandOpen_(commandOpen), query_(query) {
    commandOpen_.connectChanged(sigc::mem_fun(*this, &AddressNotch::changed));
    query_.connectChanged(sigc::mem_fun(*this, &AddressNotch::changed));
}

void AddressNotch::open() { commandOpen_.set(true); }

void AddressNotch::open(std::string_view query) {
    const ChangeSignal::Scope scope{changes_};
    setQuery(query);
    open();
}

void AddressNotch::close() { commandOpen_.set(false); }

void AddressNotch::setQuery(std::string_view query) { query_.set(std::string{query}); }

void AddressNotch::ask() { asked_.emit(std::string{query()}); }

void AddressNotch::changed() {
    const ChangeSignal::Scope scope{changes_};
    changes_.note();
}

}  // namespace orvu
