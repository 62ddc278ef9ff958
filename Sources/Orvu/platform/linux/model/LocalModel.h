#pragma once

#include "platform/LanguageModel.h"

namespace orvu {

/// The language model of a model server that runs on this computer.
class LocalModel : public LanguageModel {
public:
    [[nodiscard]] std::optional<UnavailableReason> unavailableReason() const override;
    [[nodiscard]] std::string modelName() const override;
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) override;
    void look() override;
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override;

private:
    sigc::signal<void()> changed_;
};

}  // namespace orvu
