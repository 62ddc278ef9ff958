#include "shell/pagearea/PageNotice.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Translation.h"
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
            return phrase("its certificate was called back");
        case CertificateFault::wrongHost:
            return phrase("its certificate belongs to another site");
        case CertificateFault::unknownAuthority:
            return phrase("nobody known vouches for its certificate");
        case CertificateFault::expired:
            return phrase("its certificate has expired");
        case CertificateFault::notYetValid:
            return phrase("its certificate is not valid yet");
        case CertificateFault::insecure:
            return phrase("its certificate could be forged");
        case CertificateFault::other:
            break;
    }
    return phrase("its certificate is not right");
}

std::string_view reason(const LoadFailure& failure) {
    switch (failure.cause) {
        case LoadFailureCause::noNetwork:
            return phrase("this computer is not connected to a network");
        case LoadFailureCause::noSuchName:
            return phrase("there is no site of that name");
        case LoadFailureCause::refused:
            return phrase("it refused the connection");
        case LoadFailureCause::unreachable:
            return phrase("no way leads there");
        case LoadFailureCause::timedOut:
            return phrase("it did not answer in time");
        case LoadFailureCause::connectionLost:
            return phrase("the connection broke off");
        case LoadFailureCause::tooManyRedirects:
            return phrase("it sends from one address to the next without end");
        case LoadFailureCause::certificate:
            return fault(failure.certificate.value_or(CertificateFault::other));
        case LoadFailureCause::secureConnection:
            return phrase("no secure connection came about");
        case LoadFailureCause::noSuchFile:
            return phrase("there is no such file");
        case LoadFailureCause::otherProgram:
            return phrase("no program here opens such addresses");
        case LoadFailureCause::processEnded:
        case LoadFailureCause::addressFlood:
        case LoadFailureCause::other:
            break;
    }
    return phrase("something went wrong");
}

std::string refusal(const LoadFailure& failure) {
    return tr("Couldn't open {1}: {2}.", target(failure.url), reason(failure));
}

PageNotice ofCertificate(const LoadFailure& failure, PageNotice::Explained explained) {
    if (explained == PageNotice::Explained::no) {
        return {refusal(failure),
                {{Action::explain, phrase("Open Anyway…")},
                 {Action::edit, phrase("Edit")},
                 {Action::tryAgain, phrase("Try Again")}}};
    }
    return {refusal(failure) + " " +
                tr("Somebody else may pass for {1}, and read and change all that goes to and fro.",
                   target(failure.url)),
            {{Action::openAnyway, phrase("Open Anyway")}, {Action::tryAgain, phrase("Try Again")}}};
}

PageNotice ofOtherProgram(const LoadFailure& failure, const std::optional<std::string>& program) {
    if (!program) return {refusal(failure), {{Action::edit, phrase("Edit")}}};
    return {
        tr("{1} opens in another program.", oneLine(failure.url.absoluteString(), addressLimit)),
        {{Action::openWith, tr("Open with {1}", oneLine(*program, addressLimit))}}};
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
            return {phrase("This page ended unexpectedly, twice."),
                    {{Action::reload, phrase("Reload")}}};
        case LoadFailureCause::addressFlood:
            return {phrase("Stopped this page: it changed its address without end, and held "
                           "everything up."),
                    {{Action::reload, phrase("Reload")}}};
        default:
            return {refusal(failure),
                    {{Action::edit, phrase("Edit")}, {Action::tryAgain, phrase("Try Again")}}};
    }
}

}  // namespace orvu
