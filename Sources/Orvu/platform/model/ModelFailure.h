#pragma once

#include "platform/LanguageModel.h"

#include <string>
#include <string_view>

namespace orvu {

/// Why a model that was asked gave no reply.
enum class ModelFailure {
    unreachable,    ///< nobody listens where the server was
    anotherPerson,  ///< the server is somebody else's
    unknownOwner,   ///< nobody can tell whose it is
    silent,         ///< no byte came for too long
    slow,           ///< the whole took too long
    hungUp,         ///< the connection ended before an answer began
    brokeOff,       ///< or in the middle of it
    unreadable,     ///< what came is no model server's answer
    tooLong,        ///< the reply is
    blank,          ///< the reply is
    contextTooSmall,
    modelGone,
    loading,
    locked,      ///< the server wants a key
    unloadable,  ///< the model's file can't be read
    noMemory,    ///< the model takes more than there is
    processor,   ///< there is no engine for this computer's processor
    notShutIn,   ///< the model can't be kept from files and network, so it isn't run
    refused,     ///< the server reports any other error
};

/// A failure with what the server says of it.
struct ModelError {
    ModelFailure failure = ModelFailure::unreadable;
    std::string detail = {};    ///< one line, or nothing
    bool isOfThinking = false;  ///< the server doesn't know how to leave thoughts out

    friend bool operator==(const ModelError&, const ModelError&) = default;
};

/// The failure in a sentence for the person.
[[nodiscard]] std::string sentence(const ModelError& error);
/// Why nobody was asked, in a sentence for the person.
[[nodiscard]] std::string sentence(UnavailableReason reason);

/// What an answer that is no success means: its HTTP status and its body.
[[nodiscard]] ModelError errorOfAnswer(int status, std::string_view body);
/// Whether a server says in its body that it loads its model; other programs give the same status
/// without these words.
[[nodiscard]] bool tellsOfLoading(std::string_view body);
/// What the server says of an error within an answer that began well.
[[nodiscard]] ModelError errorOfText(std::string_view text);

}  // namespace orvu
