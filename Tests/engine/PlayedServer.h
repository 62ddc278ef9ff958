#pragma once

#include <gio/gio.h>

#include <list>
#include <map>
#include <string>
#include <vector>

namespace orvu {

/// A server on the loopback interface that says, byte by byte, what a test wants it to say. It is
/// run by the test's own main loop.
class PlayedServer {
public:
    /// What is sent for a request: all of an HTTP answer, or none of it.
    struct Answer {
        enum class Then {
            close,   ///< the connection
            hold,    ///< it, and say nothing more
            repeat,  ///< the text `again` without end
        };
        std::string bytes = "";
        Then then = Then::close;
        std::string again = "";
        int delay = 0;  ///< milliseconds before the first byte
    };
    enum class Family { ipv4, ipv6 };

    explicit PlayedServer(Family family = Family::ipv4);
    ~PlayedServer();
    PlayedServer(const PlayedServer&) = delete;
    PlayedServer& operator=(const PlayedServer&) = delete;

    /// An answer whose body has the length that it says.
    [[nodiscard]] static Answer json(const std::string& body, int status = 200);
    /// An answer whose body ends with the connection.
    [[nodiscard]] static Answer stream(const std::string& body, Answer::Then then);

    void serve(const std::string& path, Answer answer) { answers_[path] = std::move(answer); }
    /// Answers nothing any more, and breaks off all connections. The port stays its own.
    void kill();
    void start();

    [[nodiscard]] std::uint16_t port() const { return port_; }
    /// The paths that were asked for, in order.
    [[nodiscard]] const std::vector<std::string>& paths() const { return paths_; }
    [[nodiscard]] int requests(const std::string& path) const;
    /// The head of the last request for a path, and its body.
    [[nodiscard]] const std::string& head(const std::string& path) { return heads_[path]; }
    [[nodiscard]] const std::string& body(const std::string& path) { return bodies_[path]; }
    /// All bytes that ever came.
    [[nodiscard]] std::size_t bytes() const { return bytes_; }
    /// How many connections came, and how many of them are open.
    [[nodiscard]] int connections() const { return connections_; }
    [[nodiscard]] std::size_t open() const { return open_.size(); }

private:
    struct Connection;
    static gboolean incoming(GSocketService* service, GSocketConnection* connection,
                             GObject* source, gpointer data);
    void answer(Connection& connection);
    void remove(Connection& connection);

    const Family family_;
    std::uint16_t port_ = 0;
    GSocketService* service_ = nullptr;
    std::list<Connection> open_;
    std::map<std::string, Answer> answers_;
    std::vector<std::string> paths_;
    std::map<std::string, std::string> heads_;
    std::map<std::string, std::string> bodies_;
    std::size_t bytes_ = 0;
    int connections_ = 0;
};

}  // namespace orvu
