#pragma once

#include "foundation/Url.h"

#include <libsoup/soup.h>

#include <functional>
#include <list>
#include <map>
#include <string>
#include <vector>

namespace orvu {

/// A web server on the loopback interface, run by the test's own main loop.
class LoopbackServer {
public:
    struct Answer {
        std::string body = "";
        std::string type = "text/html";
        int status = 200;
        std::vector<std::pair<std::string, std::string>> headers = {};
        bool held = false;         ///< never answered
        bool drips = false;        ///< the body is followed by a byte at a time, without end
        unsigned dripPause = 100;  ///< milliseconds between these
        /// The answer says that its body is so long, and ends behind the body; 0 for the truth.
        long declaredLength = 0;
    };

    LoopbackServer();
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// What stands at a path from now on.
    void serve(const std::string& path, Answer answer) { answers_[path] = std::move(answer); }
    void serve(const std::string& path, const std::string& html) { serve(path, Answer{html}); }
    /// The address of a path, below `host`.
    [[nodiscard]] std::string url(const std::string& path,
                                  const std::string& host = "127.0.0.1") const;
    /// An address of this computer at which nobody listens.
    [[nodiscard]] static Url deadUrl(const std::string& path);
    /// How often a path was asked for.
    [[nodiscard]] int requests(const std::string& path) const;
    /// The query of the last request for a path, as it was sent.
    [[nodiscard]] std::string query(const std::string& path) const;
    /// The last value of a request header for a path.
    [[nodiscard]] std::string header(const std::string& path, const std::string& name) const;
    /// How many bodies that drip are still being read.
    [[nodiscard]] int dripping() const;
    /// Ends all bodies that drip as it should be.
    void completeDrips();
    /// Breaks off all bodies that drip, between two pieces.
    void breakDrips();

private:
    struct Drip;
    void beginDripping(SoupServerMessage* message, const Answer& answer);
    static void breakOff(SoupServerMessage* message, const Answer& answer);
    static void handle(SoupServer* server, SoupServerMessage* message, const char* path,
                       GHashTable* query, gpointer data);

    SoupServer* server_;
    int port_ = 0;
    std::list<Drip> drips_;
    std::map<std::string, Answer> answers_;
    std::map<std::string, int> requests_;
    std::map<std::string, std::string> queries_;
    std::map<std::string, std::map<std::string, std::string>> headers_;
};

}  // namespace orvu
