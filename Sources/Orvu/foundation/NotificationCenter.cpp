#include "foundation/NotificationCenter.h"

namespace orvu {

sigc::connection NotificationCenter::addObserver(std::string_view name,
                                                 const sigc::slot<void()>& observer) {
    return signals_[std::string{name}].connect(observer);
}

void NotificationCenter::post(std::string_view name) {
    const auto found = signals_.find(name);
    if (found != signals_.end()) found->second.emit();
}

}  // namespace orvu
