#include "platform/PageAddress.h"

namespace orvu {

bool PageAddress::asked(const Url& url) {
    asked_ = url;
    return show(url);
}

bool PageAddress::engineMoved(const std::optional<Url>& url, bool isLoading) {
    if (!url) return ended();
    if (!isLoading) document_ = url;
    return show(url);
}

void PageAddress::committed() {
    document_ = url_;
    asked_.reset();
}

bool PageAddress::ended() { return show(document_ ? document_ : asked_); }

bool PageAddress::becameDownload() {
    asked_.reset();
    return show(document_);
}

bool PageAddress::show(const std::optional<Url>& url) {
    if (url_ == url) return false;
    const auto next = url;  // the argument may be a part of this
    url_ = next;
    return true;
}

}  // namespace orvu
