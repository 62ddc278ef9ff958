#include "core/TrackerBlocker.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {

std::string TrackerBlocker::urlFilter(std::string_view host) {
    return R"(^https?://([^/]+\.)?)" + replacingAll(host, ".", R"(\.)") + "[/:]";
}

std::optional<std::string> TrackerBlocker::encodedRules(std::span<const std::string_view> hosts) {
    JsonWriter writer;
    writer.beginArray();
    for (const std::string_view host : hosts) {
        writer.beginObject().key("trigger").beginObject();
        writer.key("url-filter").value(urlFilter(host));
        writer.key("load-type").beginArray().value("third-party").endArray();
        writer.endObject();
        writer.key("action").beginObject().key("type").value("block").endObject();
        writer.endObject();
    }
    writer.endArray();
    return std::move(writer).finish();
}

void TrackerBlocker::prepare() {
    if (compiled_ || compiling_) return;
    auto rules = encodedRules(hosts_);
    if (!rules) return waiting_.clear();
    compiling_ = true;
    tasks_.start(compile(std::move(*rules)));
}

void TrackerBlocker::install(const std::shared_ptr<UserContentController>& controller) {
    if (compiled_) return controller->add(*compiled_);
    if (std::ranges::find(waiting_, controller) == waiting_.end()) waiting_.push_back(controller);
    prepare();
}

Task<void> TrackerBlocker::compile(std::string rules) {
    auto compiling = store_.compile(std::string{identifier}, std::move(rules));
    compiled_ = co_await compiling;
    compiling_ = false;
    const auto waiting = std::exchange(waiting_, {});
    if (!compiled_) co_return;
    for (const auto& controller : waiting) controller->add(*compiled_);
}

}  // namespace orvu
