#include "platform/linux/web/SessionWebsiteData.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orvu {
namespace {

/// The engine's records, which go with this.
class Records {
public:
    explicit Records(GList* list) : list_(list) {}
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;
    ~Records() {
        g_list_free_full(list_, [](gpointer record) {
            webkit_website_data_unref(static_cast<WebKitWebsiteData*>(record));
        });
    }

    [[nodiscard]] GList* list() const { return list_; }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const GList* each = list_; each; each = each->next) names.push_back(name(each));
        return names;
    }
    /// Keeps only the records of these names.
    void keep(const std::vector<std::string>& keptNames) {
        for (GList* each = list_; each;) {
            GList* const next = each->next;
            if (std::ranges::find(keptNames, name(each)) == keptNames.end()) {
                webkit_website_data_unref(static_cast<WebKitWebsiteData*>(each->data));
                list_ = g_list_delete_link(list_, each);
            }
            each = next;
        }
    }

private:
    [[nodiscard]] static std::string name(const GList* each) {
        const char* const name =
            webkit_website_data_get_name(static_cast<WebKitWebsiteData*>(each->data));
        return name ? name : "";
    }

    GList* list_;
};

using Session = std::shared_ptr<WebKitSession>;
using Fetched = std::function<void(std::unique_ptr<Records>)>;

WebKitWebsiteDataManager* managerOf(const Session& session) {
    return webkit_network_session_get_website_data_manager(session->get());
}

/// A callback of the engine that runs `done` with the result, and that once.
using Done = std::function<void(GObject*, GAsyncResult*)>;
void finished(GObject* manager, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Done> done{static_cast<Done*>(data)};
    (*done)(manager, result);
}
gpointer hold(Done done) { return std::make_unique<Done>(std::move(done)).release(); }

/// Reads all records and holds the session until then.
void fetch(const Session& session, Fetched fetched) {
    webkit_website_data_manager_fetch(
        managerOf(session), WEBKIT_WEBSITE_DATA_ALL, nullptr, finished,
        hold([session, fetched = std::move(fetched)](GObject* manager, GAsyncResult* result) {
            fetched(std::make_unique<Records>(webkit_website_data_manager_fetch_finish(
                WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr)));
        }));
}

/// Removes records, and holds them and the session until that is done.
void removeRecords(const Session& session, std::shared_ptr<Records> records,
                   const Promise<bool>& promise) {
    if (!records->list()) return promise.resolve(true);
    GList* const list = records->list();
    webkit_website_data_manager_remove(
        managerOf(session), WEBKIT_WEBSITE_DATA_ALL, list, nullptr, finished,
        hold([session, records = std::move(records), promise](GObject* manager,
                                                              GAsyncResult* result) {
            promise.resolve(webkit_website_data_manager_remove_finish(
                                WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr) != FALSE);
        }));
}

}  // namespace

Future<bool> clearWebsiteData(const std::shared_ptr<WebKitSession>& session) {
    const Promise<bool> promise;
    webkit_website_data_manager_clear(
        managerOf(session), WEBKIT_WEBSITE_DATA_ALL, 0, nullptr, finished,
        hold([session, promise](GObject* manager, GAsyncResult* result) {
            promise.resolve(webkit_website_data_manager_clear_finish(
                                WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr) != FALSE);
        }));
    return promise.future();
}

Future<std::vector<std::string>> SessionWebsiteData::records() {
    const Promise<std::vector<std::string>> promise;
    fetch(session_, [promise](const std::unique_ptr<Records>& records) {
        promise.resolve(records->names());
    });
    return promise.future();
}

Future<bool> SessionWebsiteData::remove(std::vector<std::string> names) {
    const Promise<bool> promise;
    fetch(session_, [session = session_, promise,
                     names = std::move(names)](std::unique_ptr<Records> records) {
        records->keep(names);
        removeRecords(session, std::move(records), promise);
    });
    return promise.future();
}

}  // namespace orvu
