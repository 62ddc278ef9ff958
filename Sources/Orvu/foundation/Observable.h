#pragma once

#include <sigc++/sigc++.h>

#include <utility>

namespace orvu {

/// A value that tells when it becomes another one.
template <class T>
class Observable {
public:
    Observable() = default;
    explicit Observable(T value) : value_(std::move(value)) {}
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;

    [[nodiscard]] const T& get() const { return value_; }
    /// Tells if the value differs. An observer may set it again, or end it.
    void set(T value) {
        if (value == value_) return;
        value_ = std::move(value);
        changed_.emit();
    }
    /// Calls `slot` after each change.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    T value_{};
    sigc::signal<void()> changed_;
};

}  // namespace orvu
