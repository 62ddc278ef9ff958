#pragma once

#include <glib-object.h>

#include <utility>

namespace orvu {

/// A counted reference to an object of a C library.
template <class T>
class GObjectPointer {
public:
    GObjectPointer() = default;
    GObjectPointer(GObjectPointer&& other) noexcept : object_(std::exchange(other.object_, {})) {}
    GObjectPointer& operator=(GObjectPointer&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~GObjectPointer() {
        if (object_) g_object_unref(object_);
    }

    /// Takes over a reference that the caller owns, also a floating one.
    [[nodiscard]] static GObjectPointer adopt(T* object) {
        GObjectPointer pointer;
        pointer.object_ = object;
        if (object && g_object_is_floating(object)) g_object_ref_sink(object);
        return pointer;
    }
    /// Adds a reference to an object that somebody else owns.
    [[nodiscard]] static GObjectPointer retain(T* object) {
        GObjectPointer pointer;
        pointer.object_ = object;
        if (object) g_object_ref(object);
        return pointer;
    }

    [[nodiscard]] T* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};

}  // namespace orvu
