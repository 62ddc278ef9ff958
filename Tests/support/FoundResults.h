#pragma once

#include "search/answers/ResultsPage.h"

#include <ostream>

namespace orvu {

/// How a failed test shows a result.
inline void PrintTo(const FoundResult& value, std::ostream* out) {
    *out << "\n  " << value.title << "\n    " << value.url.absoluteString() << "\n    "
         << value.snippet << "\n    " << (value.shown ? value.shown->absoluteString() : "nothing");
}

}  // namespace orvu
