#pragma once

#include "platform/Pasteboard.h"

namespace orvu {

/// A pasteboard that shows what lies on it.
class FakePasteboard : public Pasteboard {
public:
    void setString(const std::string& newText) override { text = newText; }

    std::string text;
};

}  // namespace orvu
