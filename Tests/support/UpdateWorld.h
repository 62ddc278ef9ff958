#pragma once

#include "fakes/FakeUpdateInstaller.h"
#include "fakes/FakeUpdateTransport.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/VirtualMainLoop.h"
#include "update/Updater.h"

#include <string>
#include <vector>

namespace orvu {

/// An updater of the build 10 on a server and a disk that a test plays.
struct UpdateWorld {
    using Kind = Updater::State::Kind;

    static constexpr const char* feed = "https://updates.example/orvu/update.json";
    static constexpr const char* archive = "https://updates.example/orvu/12.tar.gz";
    static constexpr const char* signedText = "https://updates.example/orvu/12.tar.gz.signed";

    [[nodiscard]] static std::string manifest(const std::string& build = "12",
                                              const std::string& url = archive,
                                              const std::string& hash = "abcd") {
        return R"({"version":"1.2","build":)" + build + R"(,"url":")" + url + R"(","sha256":")" +
               hash + "\"}";
    }
    bool answer(const char* url, const std::string& body) {
        return transport.answer(url, {.body = body});
    }
    bool fail(const char* url) { return transport.answer(url, {.failure = "No route."}); }

    /// What the server says to a check.
    void check(UserInitiated asked, const std::string& body) {
        updater.check(asked);
        answer(feed, body);
    }
    /// Takes an update as far as the restart.
    void makeReady() {
        check(UserInitiated::yes, manifest());
        answer(archive, "");
        answer(signedText, "signed");
    }
    [[nodiscard]] Updater::State state() const { return updater.state.get(); }
    [[nodiscard]] Kind kind() const { return state().kind; }

    FakeUserDefaults defaults;
    Settings settings{defaults};
    VirtualMainLoop loop;
    FakeUpdateTransport transport;
    FakeUpdateInstaller installer;
    Updater updater{{defaults, settings, loop, transport, installer},
                    UpdateServer{"updates.example"},
                    ApplicationFacts{.version = "1.0", .build = 10, .identity = "app.orvu.Orvu"}};
};

}  // namespace orvu
