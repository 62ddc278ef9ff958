#include "platform/linux/http/GuardedAddress.h"

#include "platform/PublicAddress.h"

namespace orvu {
namespace {

/// The addresses that another enumerator gives, without those that are not of the world.
struct Enumerator {
    GSocketAddressEnumerator base;
    GSocketAddressEnumerator* all;
    bool hasRefused;
};

Enumerator& enumeratorOf(gpointer object) { return *static_cast<Enumerator*>(object); }

bool isAllowed(GSocketAddress* address) {
    return G_IS_INET_SOCKET_ADDRESS(address) &&
           isPublic(g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(address)));
}

GError* refusal() {
    return g_error_new_literal(G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED,
                               "The host is of this computer or the network around it");
}

GSocketAddress* next(GSocketAddressEnumerator* object, GCancellable* cancellable, GError** error) {
    Enumerator& self = enumeratorOf(object);
    GError* failure = nullptr;
    GSocketAddress* address = g_socket_address_enumerator_next(self.all, cancellable, &failure);
    while (address && !isAllowed(address)) {
        g_object_unref(address);
        self.hasRefused = true;
        address = g_socket_address_enumerator_next(self.all, cancellable, &failure);
    }
    if (!address && !failure && self.hasRefused) failure = refusal();
    if (failure) g_propagate_error(error, failure);
    return address;
}

void askNext(GTask* task);

void addressCame(GObject* source, GAsyncResult* result, gpointer data) {
    GTask* const task = G_TASK(data);
    Enumerator& self = enumeratorOf(g_task_get_source_object(task));
    GError* failure = nullptr;
    GSocketAddress* const address = g_socket_address_enumerator_next_finish(
        G_SOCKET_ADDRESS_ENUMERATOR(source), result, &failure);
    if (address && !isAllowed(address)) {
        g_object_unref(address);
        self.hasRefused = true;
        return askNext(task);
    }
    if (!address && !failure && self.hasRefused) failure = refusal();
    if (failure) {
        g_task_return_error(task, failure);
    } else {
        g_task_return_pointer(task, address, g_object_unref);
    }
    g_object_unref(task);
}

void askNext(GTask* task) {
    g_socket_address_enumerator_next_async(enumeratorOf(g_task_get_source_object(task)).all,
                                           g_task_get_cancellable(task), addressCame, task);
}

void nextAsync(GSocketAddressEnumerator* object, GCancellable* cancellable,
               GAsyncReadyCallback callback, gpointer data) {
    askNext(g_task_new(object, cancellable, callback, data));
}

GSocketAddress* nextFinish(GSocketAddressEnumerator*, GAsyncResult* result, GError** error) {
    return static_cast<GSocketAddress*>(g_task_propagate_pointer(G_TASK(result), error));
}

void finalize(GObject* object) {
    g_object_unref(enumeratorOf(object).all);
    G_OBJECT_CLASS(g_type_class_peek(G_TYPE_SOCKET_ADDRESS_ENUMERATOR))->finalize(object);
}

GType enumeratorType() {
    static const GType type = g_type_register_static_simple(
        G_TYPE_SOCKET_ADDRESS_ENUMERATOR, "OrvuGuardedEnumerator",
        sizeof(GSocketAddressEnumeratorClass),
        [](gpointer object, gpointer) {
            auto* const enumerator = static_cast<GSocketAddressEnumeratorClass*>(object);
            enumerator->next = next;
            enumerator->next_async = nextAsync;
            enumerator->next_finish = nextFinish;
            G_OBJECT_CLASS(object)->finalize = finalize;
        },
        sizeof(Enumerator), nullptr, {});
    return type;
}

GSocketAddressEnumerator* enumerate(GSocketConnectable* host) {
    auto* const plain = static_cast<GSocketConnectableIface*>(g_type_interface_peek(
        g_type_class_peek(G_TYPE_NETWORK_ADDRESS), G_TYPE_SOCKET_CONNECTABLE));
    auto* const object = g_object_new(enumeratorType(), nullptr);
    enumeratorOf(object).all = plain->enumerate(host);
    return G_SOCKET_ADDRESS_ENUMERATOR(object);
}

/// A host's address as ever, but for what it is enumerated to.
GType addressType() {
    static const GType type = [] {
        const GType registered = g_type_register_static_simple(
            G_TYPE_NETWORK_ADDRESS, "OrvuGuardedAddress", sizeof(GNetworkAddressClass), nullptr,
            sizeof(GNetworkAddress), nullptr, {});
        const GInterfaceInfo connectable{
            [](gpointer table, gpointer) {
                static_cast<GSocketConnectableIface*>(table)->enumerate = enumerate;
            },
            nullptr, nullptr};
        g_type_add_interface_static(registered, G_TYPE_SOCKET_CONNECTABLE, &connectable);
        return registered;
    }();
    return type;
}

}  // namespace

bool isPublic(GInetAddress* address) {
    return isPublicAddress(
        {g_inet_address_to_bytes(address), g_inet_address_get_native_size(address)});
}

GObjectPointer<GSocketConnectable> guardedAddress(const char* host, guint16 port) {
    return GObjectPointer<GSocketConnectable>::adopt(G_SOCKET_CONNECTABLE(
        g_object_new(addressType(), "hostname", host, "port", guint{port}, nullptr)));
}

}  // namespace orvu
