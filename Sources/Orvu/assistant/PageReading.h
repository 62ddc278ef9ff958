#pragma once

#include "assistant/Kesto.h"
#include "core/BrowserTab.h"
#include "foundation/async/TaskScope.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <memory>
#include <vector>

namespace orvu {

/// How long a page may take to give its text. One that is busy for longer counts as one without.
inline constexpr std::chrono::seconds pageTextPatience{5};

/// What the assistant is to know of the tabs, one after the other. A tab may go meanwhile: then
/// there is its title and address if they were read already, or nothing. `scope` keeps what a busy
/// page goes on with; it and `loop` must outlive the task.
[[nodiscard]] Task<std::vector<Kesto::Page>> readPages(std::vector<std::weak_ptr<BrowserTab>> tabs,
                                                       MainLoop& loop, TaskScope& scope);

}  // namespace orvu
