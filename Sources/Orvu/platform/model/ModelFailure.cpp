#include "platform/model/ModelFailure.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <algorithm>
#include <initializer_list>

namespace orvu {
namespace {

constexpr std::size_t detailLimit = 120;  // characters

/// The first line of a server's text, without signs that could disturb the line it is shown in.
std::string oneLine(std::string_view text) {
    const std::string whole = wellFormed(wholeCodePoints(text, 4096));
    std::string_view line = trimmed(whole, TrimSet::whitespacesAndNewlines);
    line = line.substr(0, line.find_first_of("\r\n"));
    std::string result{firstCharacters(line, detailLimit)};
    std::ranges::replace_if(
        result, [](char each) { return static_cast<unsigned char>(each) < 0x20 || each == 0x7F; },
        ' ');
    return result;
}

bool tells(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::ranges::all_of(words, [&](auto word) { return text.contains(word); });
}

/// The message of {"error": "..."} or {"error": {"message": "..."}}; nothing of any other body.
std::string messageOf(std::string_view body) {
    const auto document = JsonDocument::parse(body);
    const auto error = document ? document->root().field("error") : std::nullopt;
    if (!error) return "";
    const auto message = error->field("message");
    return std::string{(message ? *message : *error).text().value_or("")};
}

}  // namespace

std::string sentence(const ModelError& error) {
    switch (error.failure) {
        case ModelFailure::unreachable:
            return phrase("The model server doesn't answer any more.");
        case ModelFailure::anotherPerson:
            return phrase("The model server belongs to another person of this computer.");
        case ModelFailure::unknownOwner:
            return phrase("Orvu can't tell whose model server this is, so it tells it nothing.");
        case ModelFailure::silent:
            return phrase("The model said nothing for too long.");
        case ModelFailure::slow:
            return phrase("The model took too long to answer.");
        case ModelFailure::hungUp:
            return phrase("The model server hung up without an answer.");
        case ModelFailure::brokeOff:
            return phrase("The model stopped in the middle of its answer.");
        case ModelFailure::unreadable:
            return phrase("The model server's answer can't be read.");
        case ModelFailure::tooLong:
            return phrase("The model's answer is too long.");
        case ModelFailure::blank:
            return phrase("The model gave no answer.");
        case ModelFailure::contextTooSmall:
            return phrase("The question and its pages are too long for this model.");
        case ModelFailure::modelGone:
            return phrase("The model isn't on its server any more.");
        case ModelFailure::loading:
            return phrase("The model is still loading; try again in a bit.");
        case ModelFailure::locked:
            return phrase("The model server asks for a key, which Orvu doesn't have.");
        case ModelFailure::unloadable:
            return phrase("The model's file can't be read.");
        case ModelFailure::noMemory:
            return phrase("There isn't enough free memory for the model.");
        case ModelFailure::processor:
            return phrase("This computer's processor is too old to run a model.");
        case ModelFailure::notShutIn:
            return phrase("The model can't be shut in on this system, so Orvu doesn't run it.");
        case ModelFailure::refused:
            break;
    }
    if (error.detail.empty()) return phrase("The model server reports an error.");
    return tr("The model server reports an error: “{1}”.", error.detail);
}

std::string sentence(UnavailableReason reason) {
    switch (reason) {
        case UnavailableReason::noServer:
            return phrase("There is no model server on this computer.");
        case UnavailableReason::noModel:
            return phrase("The model server on this computer has no model that can answer.");
        case UnavailableReason::othersServer:
            return sentence(ModelError{ModelFailure::anotherPerson});
        case UnavailableReason::serverIsLoading:
            return sentence(ModelError{ModelFailure::loading});
        case UnavailableReason::noFile:
            return phrase("There is no model on this computer.");
        case UnavailableReason::noMemory:
            return sentence(ModelError{ModelFailure::noMemory});
        case UnavailableReason::processor:
            return sentence(ModelError{ModelFailure::processor});
        case UnavailableReason::notShutIn:
            return sentence(ModelError{ModelFailure::notShutIn});
        default:
            return sentence(ModelError{ModelFailure::unknownOwner});
    }
}

ModelError errorOfAnswer(int status, std::string_view body) {
    ModelError error = errorOfText(messageOf(body));
    if (error.failure != ModelFailure::refused || error.isOfThinking) return error;
    if (status == 401 || status == 403) return {ModelFailure::locked};
    if (status == 404) return {ModelFailure::modelGone};
    if (status == 503 && error.detail.empty()) return {ModelFailure::loading};
    if (status < 400) return {ModelFailure::unreadable};
    return error;
}

bool tellsOfLoading(std::string_view body) {
    return errorOfText(messageOf(body)).failure == ModelFailure::loading;
}

ModelError errorOfText(std::string_view text) {
    const std::string folded = lowercased(wellFormed(wholeCodePoints(text, 4096)));
    const bool isOfContext =
        tells(folded, {"context", "exceed"}) || tells(folded, {"context", "too long"}) ||
        tells(folded, {"maximum context length"}) || tells(folded, {"context", "overflow"});
    if (isOfContext) return {ModelFailure::contextTooSmall};
    if (tells(folded, {"loading model"})) return {ModelFailure::loading};
    if (tells(folded, {"model", "not found"})) return {ModelFailure::modelGone};
    return {ModelFailure::refused, oneLine(text), tells(folded, {"think"})};
}

}  // namespace orvu
