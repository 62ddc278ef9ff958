#pragma once

#include "platform/SystemPaths.h"
#include "platform/WebConfiguration.h"
#include "platform/linux/GObjectPointer.h"

#include <webkit/webkit.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace orvu {

/// Takes a download that may begin.
using DownloadTaker = std::function<void(std::unique_ptr<Download>)>;
/// Hears of each download that the engine began.
using DownloadsBegun = std::function<void(WebKitDownload*)>;

/// A network session of the engine, which holds one website data store. It lives as long as
/// somebody holds it.
class WebKitSession {
public:
    /// In memory alone.
    WebKitSession();
    /// In two folders. There must not be another session on them: it would have cookies of its own.
    WebKitSession(const std::filesystem::path& data, const std::filesystem::path& caches);

    [[nodiscard]] WebKitNetworkSession* get() const { return session_.get(); }
    /// From now on; once. What begins while nobody holds this any more is given on as well.
    void tellOfDownloads(std::shared_ptr<const DownloadsBegun> begun) const;

private:
    void keepNoPasswords() const;

    GObjectPointer<WebKitNetworkSession> session_;
};

/// The sessions of all profiles, each made when it is first wanted and shared while it lives.
class WebKitSessions {
public:
    /// `begun` hears of the downloads of all sessions.
    WebKitSessions(SystemPaths paths, std::shared_ptr<const DownloadsBegun> begun)
        : paths_(std::move(paths)), begun_(std::move(begun)) {}

    [[nodiscard]] std::shared_ptr<WebKitSession> session(const WebsiteDataStore& store);
    /// Deletes what a profile's websites stored, on a thread of its own.
    void remove(const Uuid& identifier);
    /// Deletes the folders of all profiles but those in `known`: the engine may write some files
    /// once more after a removal.
    void removeAllBut(const std::vector<Uuid>& known);

private:
    struct Folders {
        std::filesystem::path data;
        std::filesystem::path caches;
    };
    [[nodiscard]] Folders folders(const WebsiteDataStore& store) const;

    const SystemPaths paths_;
    const std::shared_ptr<const DownloadsBegun> begun_;
    std::map<std::filesystem::path, std::weak_ptr<WebKitSession>> live_;
};

}  // namespace orvu
