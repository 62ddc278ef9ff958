#pragma once

#include "foundation/Image.h"
#include "foundation/Signal.h"
#include "foundation/async/TaskScope.h"
#include "platform/FileIO.h"
#include "platform/HttpSession.h"
#include "platform/ImageCodec.h"
#include "site/Persistence.h"
#include "site/icons/FetchTurns.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace orvu {

/// A small image for each site: from memory, from a folder, or from the network. It never makes
/// its caller wait: who asks gets an image or nothing, and is told when one arrives.
///
/// A host in any case of letters, with or without a leading "www.", is the same site. An icon that
/// only private windows met stays in memory; it is written when another window first asks for it.
/// Where others asked before, they see it, but it is not written: that would tell when a private
/// window was there.
class FaviconStore {
public:
    /// One page can name icons of four hosts. However slow these are, there are connections left.
    static constexpr HttpOptions httpOptions{.timeout = std::chrono::seconds{8},
                                             .totalTimeout = std::chrono::seconds{10},
                                             .bodyLimit = 1'000'000,
                                             .connections = 24,
                                             .connectionsPerHost = 4};

    /// Makes the folder. `http` was made with `httpOptions`. All that is referred to must outlive
    /// the store.
    FaviconStore(HttpSession& http, ImageCodec& codec, FileIO& files, std::filesystem::path folder);
    FaviconStore(const FaviconStore&) = delete;
    FaviconStore& operator=(const FaviconStore&) = delete;
    ~FaviconStore();

    /// The host as this store knows it; empty for no site.
    [[nodiscard]] static std::string key(std::string_view host);
    /// The name of a site's file. Sites that differ only in signs share one.
    [[nodiscard]] static std::string fileName(std::string_view key);

    /// The site's icon if it is at hand. Otherwise begins to look for it, once for each site.
    [[nodiscard]] ImagePointer icon(std::string_view host, Persistence persistence);
    /// Gives a site an icon, whatever it had.
    void set(const ImagePointer& image, std::string_view host, Persistence persistence);
    /// The image at a web address; null for anything else. Waits for its turn while there are as
    /// many fetches as `httpOptions` has connections. The store must outlive the task.
    [[nodiscard]] Task<ImagePointer> fetch(Url url);

    [[nodiscard]] bool isLoading(std::string_view host) const {
        return loading_.contains(key(host));
    }
    /// Whether every try failed. The site is not tried again in this run.
    [[nodiscard]] bool isMissing(std::string_view host) const {
        return missing_.contains(key(host));
    }

    /// Calls `slot` after the icon of any site changed.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }
    /// Calls `slot` after the icon of this one site changed.
    sigc::connection connectIcon(std::string_view host, const sigc::slot<void()>& slot);
    /// For how many hosts the store keeps whom to tell: for some beside those that somebody
    /// watches, but no more than twice as many, or a hundred.
    [[nodiscard]] std::size_t watchedHosts() const { return watched_.size(); }

private:
    static constexpr std::size_t fewWatched = 100;

    struct Icon {
        ImagePointer image;
        bool isUnsaved = false;  ///< only private windows know of the site so far
    };

    [[nodiscard]] Task<void> load(std::string key);
    [[nodiscard]] Task<ImagePointer> fetchPath(std::string key, std::string path);
    [[nodiscard]] Task<void> save(std::string key, ImagePointer image);
    void put(const std::string& key, Icon icon);
    void store(const std::string& key, const ImagePointer& image, Persistence persistence);
    void forgetUnwatched();
    [[nodiscard]] std::filesystem::path file(std::string_view key) const;

    HttpSession& http_;
    ImageCodec& codec_;
    FileIO& files_;
    const std::filesystem::path folder_;
    std::unordered_map<std::string, Icon> icons_;
    std::unordered_map<std::string, Persistence>
        loading_;  ///< and whether what comes may be written
    std::unordered_set<std::string> missing_;
    std::unordered_set<std::string> asked_;  ///< by windows that are not private
    std::unordered_map<std::string, sigc::signal<void()>> watched_;
    std::size_t forgettingSize_ = fewWatched;  ///< of `watched_`
    sigc::signal<void()> changed_;
    FetchTurns turns_{
        {.inAll = httpOptions.connections, .perHost = httpOptions.connectionsPerHost}};
    TaskScope tasks_;  // last, so that it ends before what its work uses
};

}  // namespace orvu
