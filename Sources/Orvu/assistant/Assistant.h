#pragma once

#include "assistant/Kesto.h"
#include "assistant/SkillStore.h"

namespace orvu {

/// What all windows share of the assistant. The model and the user defaults that it is made with
/// must outlive it.
struct Assistant {
    Assistant(LanguageModel& model, UserDefaults& defaults) : kesto(model), skills(defaults) {}

    Kesto kesto;
    SkillStore skills;
};

}  // namespace orvu
