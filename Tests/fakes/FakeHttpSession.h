#pragma once

#include "platform/HttpSession.h"

#include <algorithm>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// A network whose servers answer when a test says so.
class FakeHttpSession : public HttpSession {
public:
    [[nodiscard]] Future<std::optional<HttpResponse>> get(const Url& url,
                                                          const Headers& headers) override {
        asked.push_back(url.absoluteString());
        sentHeaders.push_back(headers);
        const auto request = requests_.insert(requests_.end(), {asked.back(), {}});
        request->promise.onAbandoned([this, address = asked.back()] {
            abandoned.push_back(address);
            std::erase_if(requests_, [](const Request& each) { return !each.promise.isWanted(); });
        });
        return request->promise.future();
    }

    /// Ends the oldest open request for `url`. False if there is none.
    bool answer(const std::string& url, std::optional<HttpResponse> response) {
        const auto found = std::ranges::find(requests_, url, &Request::url);
        if (found == requests_.end()) return false;
        const auto promise = found->promise;
        requests_.erase(found);
        promise.resolve(std::move(response));
        return true;
    }
    bool answer(const std::string& url, int status, std::string body = "") {
        return answer(url, HttpResponse{status, std::move(body), url});
    }
    bool fail(const std::string& url) { return answer(url, std::nullopt); }
    [[nodiscard]] std::vector<std::string> open() const {
        std::vector<std::string> urls;
        for (const Request& each : requests_) urls.push_back(each.url);
        return urls;
    }

    std::vector<std::string> asked;      ///< the address of each request, in order
    std::vector<std::string> abandoned;  ///< the addresses of those that were dropped
    std::vector<Headers> sentHeaders;

private:
    struct Request {
        std::string url;
        Promise<std::optional<HttpResponse>> promise;
    };
    std::list<Request> requests_;
};

}  // namespace orvu
