#include "platform/InitiatedLoad.h"

#include <string_view>

namespace orvu {
namespace {

std::string_view withoutFragment(const Url& url) {
    const std::string_view text = url.absoluteString();
    return text.substr(0, text.find('#'));
}

/// The text as the value of an attribute in double quotes.
std::string attributeValue(std::string_view text) {
    std::string value;
    for (const char character : text) {
        switch (character) {
            case '&':
                value += "&amp;";
                break;
            case '"':
                value += "&quot;";
                break;
            case '<':
                value += "&lt;";
                break;
            default:
                value += character;
        }
    }
    return value;
}

/// The policy is the strictest that still gives what the page gave: it cuts the address where a
/// redirection leads to another site, or to a connection that isn't secure.
std::string documentLeadingTo(const Url& target) {
    return "<!DOCTYPE html><meta charset=utf-8>"
           "<meta http-equiv=Content-Security-Policy content=\"default-src 'none'\">"
           "<meta name=referrer content=strict-origin-when-cross-origin>"
           "<meta http-equiv=refresh content=\"0;url=" +
           attributeValue(target.absoluteString()) + "\">";
}

}  // namespace

std::optional<InitiatedLoad> InitiatedLoad::of(const Url& target, const Initiator& initiator) {
    if (!isWebUrl(target)) return std::nullopt;
    Initiator from = initiator;
    if (from.referrer && !isWebUrl(*from.referrer)) from.referrer.reset();
    // There the document would lead to itself.
    if (from.referrer && withoutFragment(*from.referrer) == withoutFragment(target)) {
        return std::nullopt;
    }
    return InitiatedLoad{target, documentLeadingTo(target), std::move(from)};
}

InitiatedLoad::Navigation InitiatedLoad::navigates() const {
    switch (stage_) {
        case Stage::asked:
            return Navigation::ownDocument;
        case Stage::leading:
        case Stage::allowed:
        case Stage::underWay:
            return Navigation::target;
        case Stage::givenUp:
            break;
    }
    return Navigation::stray;
}

void InitiatedLoad::allowed() {
    if (stage_ == Stage::leading) stage_ = Stage::allowed;
}

bool InitiatedLoad::started() {
    if (stage_ == Stage::leading || stage_ == Stage::allowed) stage_ = Stage::underWay;
    return stage_ == Stage::underWay;
}

bool InitiatedLoad::committed() {
    if (stage_ == Stage::asked) stage_ = Stage::leading;
    return stage_ == Stage::underWay;
}

void InitiatedLoad::failed() {
    // Before its document stands, it is an earlier load that ends.
    if (stage_ != Stage::asked) giveUp();
}

}  // namespace orvu
