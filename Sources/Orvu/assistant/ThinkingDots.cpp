#include "assistant/ThinkingDots.h"

#include <cmath>

namespace orvu {

double ThinkingDots::opacity(int dot, double time) {
    return (std::sin(5 * time - 0.9 * dot) * 0.5 + 0.5) * 0.75 + 0.25;
}

}  // namespace orvu
