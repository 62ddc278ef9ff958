#pragma once

#include <sigc++/sigc++.h>

#include <utility>

namespace orvu {

/// A signal connection that ends with its holder.
class ScopedConnection {
public:
    ScopedConnection() = default;
    ScopedConnection(const sigc::connection& connection) : connection_(connection) {}
    ScopedConnection(ScopedConnection&& other) noexcept
        : connection_(std::exchange(other.connection_, {})) {}
    ScopedConnection& operator=(ScopedConnection&& other) noexcept {
        if (this == &other) return *this;
        connection_.disconnect();
        connection_ = std::exchange(other.connection_, {});
        return *this;
    }
    ~ScopedConnection() { connection_.disconnect(); }

private:
    sigc::connection connection_;
};

/// A signal that gathers what nested operations report: `ChangeSignal::Scope` opens an
/// operation, and the signal goes out once, when the outermost scope ends, if anything in it
/// said `note`. An observer thus never sees a half-done operation.
class ChangeSignal {
public:
    class Scope {
    public:
        explicit Scope(ChangeSignal& signal) : signal_(signal) { ++signal_.depth_; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope() {
            if (--signal_.depth_ > 0 || !signal_.noted_) return;
            signal_.noted_ = false;
            signal_.changed_.emit();
        }

    private:
        ChangeSignal& signal_;
    };

    /// Says that something changed. Only within a `Scope`.
    void note() { noted_ = true; }
    sigc::connection connect(const sigc::slot<void()>& slot) { return changed_.connect(slot); }

private:
    sigc::signal<void()> changed_;
    int depth_ = 0;
    bool noted_ = false;
};

}  // namespace orvu
