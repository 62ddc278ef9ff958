#pragma once

#include <array>
#include <cstdint>

namespace orvu {

/// The ways in which programs speak to model servers.
enum class ModelProtocol {
    ollama,  ///< Ollama's own, below /api
    openAI,  ///< that of many servers, below /v1
};

/// A port of this computer on which a model server may listen.
struct ModelPort {
    /// Who else is found on such a port.
    enum class Custom {
        modelServers,  ///< it is known as a model server's
        anything,      ///< all kinds of programs use it
    };

    std::uint16_t number = 0;
    ModelProtocol protocol = ModelProtocol::openAI;
    Custom custom = Custom::modelServers;
};

/// Where model servers listen unless they are told otherwise, the preferred ones first.
inline constexpr std::array usualModelPorts{
    ModelPort{11434, ModelProtocol::ollama, ModelPort::Custom::modelServers},
    ModelPort{8080, ModelProtocol::openAI, ModelPort::Custom::anything},      // llama.cpp
    ModelPort{1234, ModelProtocol::openAI, ModelPort::Custom::modelServers},  // LM Studio
    ModelPort{1337, ModelProtocol::openAI, ModelPort::Custom::modelServers},  // Jan
    ModelPort{8000, ModelProtocol::openAI, ModelPort::Custom::anything},
};

}  // namespace orvu
