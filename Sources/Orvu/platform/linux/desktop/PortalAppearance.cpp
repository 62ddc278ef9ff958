#include "platform/linux/desktop/PortalAppearance.h"

#include <gtk/gtk.h>

#include <memory>
#include <string_view>

namespace orvu {
namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* scheme = "color-scheme";
constexpr const char* darkProperty = "gtk-application-prefer-dark-theme";

using VariantPointer = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

/// What lies in as many wrappings as there are: older portals wrap an answer twice.
VariantPointer unwrapped(GVariant* value) {
    VariantPointer inner{g_variant_ref(value), g_variant_unref};
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT)) {
        inner.reset(g_variant_get_variant(inner.get()));
    }
    return inner;
}

}  // namespace

PortalAppearance::PortalAppearance()
    : cancellable_(GObjectPointer<GCancellable>::adopt(g_cancellable_new())) {
    g_bus_get(
        G_BUS_TYPE_SESSION, cancellable_.get(),
        [](GObject*, GAsyncResult* result, gpointer self) {
            GError* error = nullptr;
            GDBusConnection* const bus = g_bus_get_finish(result, &error);
            const bool isGone = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
            g_clear_error(&error);
            if (bus && !isGone) static_cast<PortalAppearance*>(self)->busCame(bus);
        },
        this);
}

PortalAppearance::~PortalAppearance() {
    g_cancellable_cancel(cancellable_.get());
    if (changes_ != 0) g_dbus_connection_signal_unsubscribe(bus_.get(), changes_);
}

void PortalAppearance::busCame(GDBusConnection* bus) {
    bus_ = GObjectPointer<GDBusConnection>::adopt(bus);
    changes_ = g_dbus_connection_signal_subscribe(
        bus, portal, interface, "SettingChanged", path, appearance, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*,
           GVariant* parameters,
           gpointer self) { static_cast<PortalAppearance*>(self)->settingChanged(parameters); },
        this, nullptr);
    g_dbus_connection_call(
        bus, portal, path, interface, "Read", g_variant_new("(ss)", appearance, scheme),
        G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(),
        [](GObject* source, GAsyncResult* result, gpointer) {
            GVariant* const answer =
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
            if (!answer) return;  // no portal, or none that knows it
            const VariantPointer value{g_variant_get_child_value(answer, 0), g_variant_unref};
            apply(value.get());
            g_variant_unref(answer);
        },
        nullptr);
}

void PortalAppearance::settingChanged(GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
    const char* key = nullptr;
    g_variant_get_child(parameters, 1, "&s", &key);
    if (std::string_view{key} != scheme) return;
    const VariantPointer value{g_variant_get_child_value(parameters, 2), g_variant_unref};
    apply(value.get());
}

void PortalAppearance::apply(GVariant* value) {
    GtkSettings* const settings = gtk_settings_get_default();
    const auto inner = unwrapped(value);
    if (!settings || !g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32)) return;
    switch (static_cast<Scheme>(g_variant_get_uint32(inner.get()))) {
        case Scheme::dark:
            g_object_set(settings, darkProperty, TRUE, nullptr);
            break;
        case Scheme::light:
            g_object_set(settings, darkProperty, FALSE, nullptr);
            break;
        case Scheme::noPreference:
            gtk_settings_reset_property(settings, darkProperty);
            break;
    }
}

}  // namespace orvu
