#pragma once

#include "assistant/Kesto.h"
#include "core/BrowserTab.h"
#include "foundation/async/Task.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <memory>
#include <vector>

namespace orvu {

/// How long a page may take to give its text. One that is busy for longer counts as one without.
inline constexpr std::chrono::seconds pageTextPatience{5};

/// Reads what the assistant is to know of tabs.
class PageReader {
public:
    /// `loop` must outlive the reader.
    explicit PageReader(MainLoop& loop) : loop_(loop) {}

    /// The pages of tabs, read one after the other. A tab may go meanwhile: then there is its title
    /// and address if they were read already, or nothing. The reader must outlive the task.
    [[nodiscard]] Task<std::vector<Kesto::Page>> read(
        std::vector<std::weak_ptr<BrowserTab>> tabs) const;

private:
    [[nodiscard]] static Task<std::string> textOf(std::weak_ptr<BrowserTab> tab);

    MainLoop& loop_;
};

}  // namespace orvu
