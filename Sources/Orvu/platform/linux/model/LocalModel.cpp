#include "platform/linux/model/LocalModel.h"

namespace orvu {

std::optional<UnavailableReason> LocalModel::unavailableReason() const {
    return UnavailableReason::noServer;
}

std::string LocalModel::modelName() const { return ""; }

Future<ModelResponse> LocalModel::respond(const std::string&, const std::string&) {
    const Promise<ModelResponse> promise;
    promise.resolve({false, "There is no model server on this computer."});
    return promise.future();
}

void LocalModel::look() {}

sigc::connection LocalModel::connectChanged(const sigc::slot<void()>& slot) {
    return changed_.connect(slot);
}

}  // namespace orvu
