#pragma once

#include "foundation/text/Translation.h"

#include <string>
#include <string_view>

namespace orvu {

/// Something that a page wants and that the person is asked about, as it is shown.
struct PageQuestion {
    std::string text;
    std::string_view symbol;

    static constexpr Phrase refuse = phrase("Don't Allow");
    static constexpr Phrase allow = phrase("Allow");

    friend bool operator==(const PageQuestion&, const PageQuestion&) = default;
};

/// What a person does about a question.
enum class PageAnswer {
    allow,
    refuse,   ///< the page is not heard again on this until another document stands
    dismiss,  ///< no, this time
};

/// How a question names the page of a host, which may be empty.
[[nodiscard]] inline std::string pageNamed(const std::string& host) {
    return host.empty() ? std::string{phrase("This page")} : tr("“{1}”", host);
}

/// So many questions can a page have dismissed before that counts as a refusal.
inline constexpr int patienceWithPages = 3;

}  // namespace orvu
