#pragma once

#include "platform/OpenPanel.h"

#include <string>
#include <vector>

namespace orvu {

/// A panel in which a test chooses.
class FakeOpenPanel : public OpenPanel {
public:
    using Choice = std::optional<std::filesystem::path>;

    [[nodiscard]] Future<Choice> chooseHtml(const std::string& message) override {
        messages.push_back(message);
        promise_ = Promise<Choice>{};
        return promise_.future();
    }
    [[nodiscard]] bool isOpen() const { return !messages.empty() && promise_.isWanted(); }
    void answer(const Choice& file) const { promise_.resolve(file); }

    std::vector<std::string> messages;

private:
    Promise<Choice> promise_;
};

}  // namespace orvu
