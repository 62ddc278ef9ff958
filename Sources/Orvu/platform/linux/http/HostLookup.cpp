#include "platform/linux/http/HostLookup.h"

#include "platform/linux/GObjectPointer.h"
#include "platform/linux/http/GuardedAddress.h"

#include <gio/gio.h>

#include <memory>
#include <string_view>

namespace orvu {
namespace {

/// One lookup under way, which its callback takes over.
struct Lookup {
    Promise<bool> promise;
    GObjectPointer<GCancellable> cancellable =
        GObjectPointer<GCancellable>::adopt(g_cancellable_new());
};

/// The callback runs once, and until then the lookup, which holds the cancellable, lives.
Lookup* begin(const Promise<bool>& promise) {
    auto lookup = std::make_unique<Lookup>();
    lookup->promise = promise;
    auto* const cancellable = lookup->cancellable.get();
    promise.onAbandoned([cancellable] { g_cancellable_cancel(cancellable); });
    return lookup.release();
}

void proxiesCame(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Lookup> lookup{static_cast<Lookup*>(data)};
    char** const proxies =
        g_proxy_resolver_lookup_finish(G_PROXY_RESOLVER(source), result, nullptr);
    const bool isDirect = proxies && proxies[0] && std::string_view{proxies[0]} == "direct://";
    g_strfreev(proxies);
    lookup->promise.resolve(!isDirect);
}

void addressesCame(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Lookup> lookup{static_cast<Lookup*>(data)};
    GList* const addresses = g_resolver_lookup_by_name_finish(G_RESOLVER(source), result, nullptr);
    bool isLocal = false;
    for (const GList* each = addresses; each; each = each->next) {
        isLocal = isLocal || !isPublic(G_INET_ADDRESS(each->data));
    }
    g_resolver_free_addresses(addresses);
    lookup->promise.resolve(isLocal);
}

}  // namespace

Future<bool> isBehindProxy(const std::string& address) {
    const Promise<bool> promise;
    auto future = promise.future();
    Lookup* const lookup = begin(promise);
    g_proxy_resolver_lookup_async(g_proxy_resolver_get_default(), address.c_str(),
                                  lookup->cancellable.get(), proxiesCame, lookup);
    return future;
}

Future<bool> hasLocalAddress(const std::string& host) {
    const Promise<bool> promise;
    auto future = promise.future();
    Lookup* const lookup = begin(promise);
    GResolver* const resolver = g_resolver_get_default();
    g_resolver_lookup_by_name_async(resolver, host.c_str(), lookup->cancellable.get(),
                                    addressesCame, lookup);
    g_object_unref(resolver);
    return future;
}

}  // namespace orvu
