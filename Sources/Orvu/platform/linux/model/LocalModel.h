#pragma once

#include "foundation/async/FutureScope.h"
#include "platform/LanguageModel.h"
#include "platform/linux/model/LoopbackClient.h"
#include "platform/linux/model/ServerQuestion.h"
#include "platform/linux/model/ServerSearch.h"
#include "platform/model/ModelProtocol.h"

#include <chrono>
#include <memory>
#include <vector>

namespace orvu {

/// The language model of a model server that runs on this computer. It is looked for only when
/// somebody asks; in between there is no timer and no connection.
class LocalModel : public LanguageModel {
public:
    struct Options {
        std::vector<ModelPort> ports{usualModelPorts.begin(), usualModelPorts.end()};
        std::chrono::milliseconds lookLimit = std::chrono::seconds{1};  ///< for each answer
        AnswerLimits answer = {};
        OwnerLookup owner = ownerOfConnection;
    };

    /// `loop` must outlive this.
    explicit LocalModel(MainLoop& loop);
    LocalModel(MainLoop& loop, Options options);

    [[nodiscard]] std::optional<UnavailableReason> unavailableReason() const override {
        return found_ ? found_->reason : std::nullopt;
    }
    [[nodiscard]] std::string modelName() const override;
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) override;
    void look() override;
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

    /// Whether a look has ended.
    [[nodiscard]] bool isKnown() const { return found_.has_value(); }
    /// Whether a server is known, and nobody looks anew.
    [[nodiscard]] bool isSettled() const { return found_ && found_->server && !isLooking_; }
    /// Whether the server had a model loaded at the last look.
    [[nodiscard]] bool isLoaded() const {
        return found_ && found_->server && found_->server->isLoaded;
    }
    /// Comes at the end of the look under way, or of one that begins now.
    [[nodiscard]] Future<bool> lookEnd();

private:
    [[nodiscard]] Task<void> find();
    [[nodiscard]] Task<ModelResponse> answerTo(std::string prompt, std::string instructions);

    const Options options_;
    LoopbackClient client_;
    ServerSearch search_;
    std::optional<FoundServer> found_;  ///< nothing before the first look has ended
    bool isLooking_ = false;
    std::vector<Promise<bool>> waiting_;  ///< for the end of the look
    sigc::signal<void()> changed_;
    FutureScope answers_;
    TaskScope look_;
};

}  // namespace orvu
