#pragma once

#include "platform/UpdateTransport.h"

#include <algorithm>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// A server of updates that answers when a test says so.
class FakeUpdateTransport : public UpdateTransport {
public:
    struct Request {
        std::string url;
        Limits limits;
        std::filesystem::path place{};  ///< of a file
        Progress progress{};
        Promise<Reply> promise{};
    };

    [[nodiscard]] Future<Reply> text(const Url& url, Limits limits) override {
        return add({url.absoluteString(), limits});
    }
    [[nodiscard]] Future<Reply> file(const Url& url, std::filesystem::path place, Limits limits,
                                     Progress progress) override {
        return add({url.absoluteString(), limits, std::move(place), std::move(progress)});
    }

    /// Ends the oldest open request for `url`. False if there is none.
    bool answer(const std::string& url, Reply reply) {
        const auto found = std::ranges::find(open, url, &Request::url);
        if (found == open.end()) return false;
        const auto promise = found->promise;
        open.erase(found);
        promise.resolve(std::move(reply));
        return true;
    }

    std::list<Request> open;
    std::vector<std::string> asked;  ///< the address of each request, in order

private:
    Future<Reply> add(Request request) {
        asked.push_back(request.url);
        open.push_back(std::move(request));
        return open.back().promise.future();
    }
};

}  // namespace orvu
