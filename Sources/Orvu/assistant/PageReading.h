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

/// Reads what the assistant is to know of tabs.
class PageReader {
public:
    /// `scope` keeps what a busy page goes on with; it and `loop` must outlive the reader.
    PageReader(MainLoop& loop, TaskScope& scope) : loop_(loop), scope_(scope) {}

    /// The pages of tabs, read one after the other. A tab may go meanwhile: then there is its title
    /// and address if they were read already, or nothing. The reader must outlive the task.
    [[nodiscard]] Task<std::vector<Kesto::Page>> read(
        std::vector<std::weak_ptr<BrowserTab>> tabs) const;

private:
    void start(const std::weak_ptr<BrowserTab>& tab, const Promise<std::string>& promise) const;

    MainLoop& loop_;
    TaskScope& scope_;
};

}  // namespace orvu
