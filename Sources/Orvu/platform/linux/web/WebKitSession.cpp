#include "platform/linux/web/WebKitSession.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace orvu {
namespace {

using Paths = std::vector<std::filesystem::path>;

/// Deletes folders off the main thread.
void deleteFolders(Paths folders) {
    auto* const task = g_task_new(nullptr, nullptr, nullptr, nullptr);
    g_task_set_task_data(task, new Paths{std::move(folders)},
                         [](gpointer data) { delete static_cast<Paths*>(data); });
    g_task_run_in_thread(task, [](GTask* running, gpointer, gpointer data, GCancellable*) {
        for (const auto& folder : *static_cast<Paths*>(data)) {
            std::error_code ignored;
            std::filesystem::remove_all(folder, ignored);
        }
        g_task_return_boolean(running, TRUE);
    });
    g_object_unref(task);
}

/// What the end of a clearing needs.
struct Clearing {
    std::shared_ptr<WebKitSession> session;
    Paths folders;
};

void cleared(GObject* manager, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Clearing> clearing{static_cast<Clearing*>(data)};
    webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr);
    deleteFolders(std::move(clearing->folders));
}

}  // namespace

WebKitSession::WebKitSession()
    : session_(
          GObjectPointer<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral())) {
    keepNoPasswords();
}

WebKitSession::WebKitSession(const std::filesystem::path& data, const std::filesystem::path& caches)
    : session_(GObjectPointer<WebKitNetworkSession>::adopt(
          webkit_network_session_new(data.c_str(), caches.c_str()))) {
    keepNoPasswords();
    // Without this call cookies would live in memory only.
    webkit_cookie_manager_set_persistent_storage(
        webkit_network_session_get_cookie_manager(session_.get()),
        (data / "cookies.sqlite").c_str(), WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
}

void WebKitSession::keepNoPasswords() const {
    webkit_network_session_set_persistent_credential_storage_enabled(get(), FALSE);
}

void WebKitSession::tellOfDownloads(std::shared_ptr<const DownloadsBegun> begun) const {
    using Held = std::shared_ptr<const DownloadsBegun>;
    const auto started = +[](WebKitNetworkSession*, WebKitDownload* download, gpointer data) {
        if (const auto& tell = **static_cast<Held*>(data)) tell(download);
    };
    g_signal_connect_data(
        get(), "download-started", G_CALLBACK(started),
        std::make_unique<Held>(std::move(begun)).release(),
        [](gpointer data, GClosure*) { delete static_cast<Held*>(data); }, G_CONNECT_DEFAULT);
}

WebKitSessions::Folders WebKitSessions::folders(const WebsiteDataStore& store) const {
    if (store.kind == WebsiteDataStore::Kind::identified) {
        const auto name = std::filesystem::path{"profiles"} / store.identifier.string();
        return {paths_.data / name, paths_.caches / name};
    }
    return {paths_.data / "personal", paths_.caches / "personal"};
}

std::shared_ptr<WebKitSession> WebKitSessions::session(const WebsiteDataStore& store) {
    if (store.kind == WebsiteDataStore::Kind::nonPersistent) {
        auto session = std::make_shared<WebKitSession>();
        session->tellOfDownloads(begun_);
        return session;
    }
    const Folders location = folders(store);
    auto& known = live_[location.data];
    auto session = known.lock();
    if (!session) {
        session = std::make_shared<WebKitSession>(location.data, location.caches);
        session->tellOfDownloads(begun_);
        known = session;
    }
    return session;
}

void WebKitSessions::remove(const Uuid& identifier) {
    const auto store = WebsiteDataStore::dataStoreForIdentifier(identifier);
    const Folders gone = folders(store);
    if (!live_.contains(gone.data)) return deleteFolders({gone.data, gone.caches});
    // The engine watches the caches of each session that it ever had, and its network process
    // comes to grief when their folder goes: it stays, empty, until after the next start.
    const auto live = session(store);
    auto* const manager = webkit_network_session_get_website_data_manager(live->get());
    webkit_website_data_manager_clear(manager, WEBKIT_WEBSITE_DATA_ALL, 0, nullptr, cleared,
                                      new Clearing{live, {gone.data}});
}

void WebKitSessions::removeAllBut(const std::vector<Uuid>& known) {
    Paths gone;
    for (const auto& parent : {paths_.data / "profiles", paths_.caches / "profiles"}) {
        std::error_code error;
        const std::filesystem::directory_iterator end;
        for (std::filesystem::directory_iterator folder{parent, error}; !error && folder != end;
             folder.increment(error)) {
            const auto id = Uuid::parse(folder->path().filename().string());
            if (id && std::ranges::find(known, *id) == known.end()) gone.push_back(folder->path());
        }
    }
    if (!gone.empty()) deleteFolders(std::move(gone));
}

}  // namespace orvu
