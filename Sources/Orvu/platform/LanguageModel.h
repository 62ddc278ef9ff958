#pragma once

#include "foundation/async/Future.h"

#include <sigc++/sigc++.h>

#include <optional>
#include <string>

namespace orvu {

/// Why no model can answer.
enum class UnavailableReason {
    systemTooOld,
    deviceNotEligible,
    appleIntelligenceNotEnabled,
    modelNotReady,
    other,
    noServer,         ///< no model server runs on this computer
    noModel,          ///< one runs, and has no model that can answer
    othersServer,     ///< the only one there is belongs to another person of this computer
    serverIsLoading,  ///< one runs, and is not ready yet
    noFile,           ///< no file with a model lies on this computer
    noMemory,         ///< there is too little free memory for any that does
    processor,        ///< the processor is too old to run one
    notShutIn,        ///< one can't be kept from files and network here
};

/// The end of a request to a model.
struct ModelResponse {
    bool succeeded = false;
    std::string text;  ///< what the model says, or in a sentence for the person why it doesn't

    friend bool operator==(const ModelResponse&, const ModelResponse&) = default;
};

/// The language model of this computer. What it is told never leaves the computer, and it
/// remembers nothing from one request to the next.
class LanguageModel {
public:
    virtual ~LanguageModel() = default;

    /// Nothing while a model can be asked, and as long as nobody knows yet.
    [[nodiscard]] virtual std::optional<UnavailableReason> unavailableReason() const = 0;
    /// What the model that answers is called; empty if that isn't known.
    [[nodiscard]] virtual std::string modelName() const = 0;
    /// Asks the model once. Dropping the future ends the request at once.
    [[nodiscard]] virtual Future<ModelResponse> respond(const std::string& prompt,
                                                        const std::string& instructions) = 0;
    /// Finds out anew whether a model can be asked. Never asked for, the model stays as it was known.
    virtual void look() = 0;
    /// Calls `slot` when `unavailableReason` or `modelName` became another.
    virtual sigc::connection connectChanged(const sigc::slot<void()>& slot) = 0;
};

}  // namespace orvu
