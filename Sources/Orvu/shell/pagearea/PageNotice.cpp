#include "shell/pagearea/PageNotice.h"

#include "foundation/text/DisplayHost.h"
#include "look/text/OneLine.h"

#include <string_view>

namespace orvu {
namespace {

using Action = PageNotice::Action;
constexpr std::size_t addressLimit = 120;  // characters

/// Whom or what the person wanted to see.
std::string target(const Url& url) {
    const auto host = url.host();
    if (host && !host->empty()) return displayHost(*host);
    return oneLine(url.absoluteString(), addressLimit);
}

std::string_view fault(CertificateFault fault) {
    switch (fault) {
        case CertificateFault::revoked:
            return "its certificate was called back";
        case CertificateFault::wrongHost:
            return "its certificate belongs to another site";
        case CertificateFault::unknownAuthority:
            return "nobody known vouches for its certificate";
        case CertificateFault::expired:
            return "its certificate has expired";
        case CertificateFault::notYetValid:
            return "its certificate is not valid yet";
        case CertificateFault::insecure:
            return "its certificate could be forged";
        case CertificateFault::other:
            break;
    }
    return "its certificate is not right";
}

std::string_view reason(const LoadFailure& failure) {
    switch (failure.cause) {
        case LoadFailureCause::noNetwork:
            return "this computer is not connected to a network";
        case LoadFailureCause::noSuchName:
            return "there is no site of that name";
        case LoadFailureCause::refused:
            return "it refused the connection";
        case LoadFailureCause::unreachable:
            return "no way leads there";
        case LoadFailureCause::timedOut:
            return "it did not answer in time";
        case LoadFailureCause::connectionLost:
            return "the connection broke off";
        case LoadFailureCause::tooManyRedirects:
            return "it sends from one address to the next without end";
        case LoadFailureCause::certificate:
            return fault(failure.certificate.value_or(CertificateFault::other));
        case LoadFailureCause::secureConnection:
            return "no secure connection came about";
        case LoadFailureCause::noSuchFile:
            return "there is no such file";
        case LoadFailureCause::otherProgram:
            return "no program here opens such addresses";
        case LoadFailureCause::processEnded:
        case LoadFailureCause::addressFlood:
        case LoadFailureCause::other:
            break;
    }
    return "something went wrong";
}

std::string refusal(const LoadFailure& failure) {
    return "Couldn't open " + target(failure.url) + ": " + std::string{reason(failure)} + ".";
}

PageNotice ofCertificate(const LoadFailure& failure, PageNotice::Explained explained) {
    if (explained == PageNotice::Explained::no) {
        return {refusal(failure),
                {{Action::explain, "Open Anyway…"},
                 {Action::edit, "Edit"},
                 {Action::tryAgain, "Try Again"}}};
    }
    return {refusal(failure) + " Somebody else may pass for " + target(failure.url) +
                ", and read and change all that goes to and fro.",
            {{Action::openAnyway, "Open Anyway"}, {Action::tryAgain, "Try Again"}}};
}

PageNotice ofOtherProgram(const LoadFailure& failure, const std::optional<std::string>& program) {
    if (!program) return {refusal(failure), {{Action::edit, "Edit"}}};
    return {oneLine(failure.url.absoluteString(), addressLimit) + " opens in another program.",
            {{Action::openWith, "Open with " + oneLine(*program, addressLimit)}}};
}

}  // namespace

PageNotice PageNotice::of(const LoadFailure& failure, Explained explained,
                          const std::optional<std::string>& program) {
    switch (failure.cause) {
        case LoadFailureCause::certificate:
            return ofCertificate(failure, explained);
        case LoadFailureCause::otherProgram:
            return ofOtherProgram(failure, program);
        case LoadFailureCause::processEnded:
            return {"This page ended unexpectedly, twice.", {{Action::reload, "Reload"}}};
        case LoadFailureCause::addressFlood:
            return {
                "Stopped this page: it changed its address without end, and held everything up.",
                {{Action::reload, "Reload"}}};
        default:
            return {refusal(failure), {{Action::edit, "Edit"}, {Action::tryAgain, "Try Again"}}};
    }
}

}  // namespace orvu
