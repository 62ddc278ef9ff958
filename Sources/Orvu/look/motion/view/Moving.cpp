#include "look/motion/view/Moving.h"

namespace orvu {
namespace {

struct Count {
    int living = 0;
    sigc::signal<void()> changed;
};

Count& count() {
    static Count count;
    return count;
}

}  // namespace

Moving::Moving() {
    if (++count().living == 1) count().changed.emit();
}

Moving::~Moving() {
    if (--count().living == 0) count().changed.emit();
}

bool Moving::any() { return count().living > 0; }

sigc::connection Moving::connectChanged(const sigc::slot<void()>& slot) {
    return count().changed.connect(slot);
}

}  // namespace orvu
