#pragma once

#include "platform/linux/model/FileModel.h"
#include "platform/linux/model/LocalModel.h"

#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// The language model of this desktop. A server that has a model loaded goes first; it may have a
/// graphics card. Else a model file is run, else a server is asked that has to load one.
class DesktopModel : public LanguageModel {
public:
    /// Both must outlive this.
    DesktopModel(LocalModel& servers, FileModel& files);
    DesktopModel(const DesktopModel&) = delete;
    DesktopModel& operator=(const DesktopModel&) = delete;
    ~DesktopModel() override;

    [[nodiscard]] std::optional<UnavailableReason> unavailableReason() const override;
    [[nodiscard]] std::string modelName() const override;
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) override;
    void look() override;
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

private:
    struct Said {
        std::optional<UnavailableReason> reason;
        std::string name;
        friend bool operator==(const Said&, const Said&) = default;
    };

    [[nodiscard]] bool isKnown() const { return servers_.isKnown() && files_.isKnown(); }
    /// Who answers, as far as is known.
    [[nodiscard]] LanguageModel& source() const;
    [[nodiscard]] Task<ModelResponse> answerTo(std::string prompt, std::string instructions);
    void tellChange();

    LocalModel& servers_;
    FileModel& files_;
    Said said_;  ///< what was told last
    sigc::signal<void()> changed_;
    std::vector<sigc::connection> connections_;
    FutureScope answers_;
};

}  // namespace orvu
