#pragma once

#include "foundation/async/Future.h"
#include "foundation/Url.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace orvu {

/// The requests of the updater: over https alone, without cookies, passwords, a cache or anything
/// that tells who asks. No redirect is followed: what a server says instead is the answer. Dropping
/// a future ends its request.
class UpdateTransport {
public:
    /// What one answer may take.
    struct Limits {
        std::chrono::seconds timeout{15};  ///< how long a server may be silent
        std::uint64_t bytes = 0;           ///< a longer body is a failure
    };
    /// How far a file has come, in bytes.
    using Progress = std::function<void(std::uint64_t)>;
    struct Reply {
        std::string body{};     ///< whatever the status
        std::string failure{};  ///< a sentence for people, empty if the body is whole
    };

    virtual ~UpdateTransport() = default;

    [[nodiscard]] virtual Future<Reply> text(const Url& url, Limits limits) = 0;
    /// Writes the body to a new file, which only its owner can read; the reply has none. A file
    /// that is there already is a failure. What came before a failure may stay in the file.
    [[nodiscard]] virtual Future<Reply> file(const Url& url, std::filesystem::path place,
                                             Limits limits, Progress progress) = 0;
};

}  // namespace orvu
