#pragma once

#include "platform/LoadFailure.h"

#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// One line over the foot of a page that says why a load brought nothing, and what can be done. The
/// page that stood stays as it was.
struct PageNotice {
    enum class Action {
        tryAgain,    ///< loads the address once more
        edit,        ///< opens the notch with the address
        explain,     ///< says what the risk is, before it can be taken
        openAnyway,  ///< takes the certificate
        openWith,    ///< hands the address to another program
        reload,      ///< loads the page whose process ended
    };
    struct Button {
        Action action;
        std::string title;

        friend bool operator==(const Button&, const Button&) = default;
    };
    /// Whether the person has asked what taking a certificate would mean.
    enum class Explained { no, yes };

    std::string text;
    std::vector<Button> buttons;

    /// What is to be said of a failure. `program` is the name of the one that opens the address.
    [[nodiscard]] static PageNotice of(const LoadFailure& failure, Explained explained,
                                       const std::optional<std::string>& program);

    friend bool operator==(const PageNotice&, const PageNotice&) = default;
};

}  // namespace orvu
