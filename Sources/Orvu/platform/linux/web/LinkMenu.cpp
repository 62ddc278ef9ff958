#include "platform/linux/web/LinkMenu.h"

#include <memory>
#include <optional>
#include <utility>

namespace orvu {
namespace {

/// A link, and what opens it.
struct LinkTarget {
    Url url;
    std::function<void(const Url&)> open;
};

void openLink(GSimpleAction*, GVariant*, gpointer data) {
    const auto& target = *static_cast<LinkTarget*>(data);
    target.open(target.url);
}

/// The place of the engine's own item in the menu.
std::optional<guint> placeOfOwnItem(WebKitContextMenu* menu) {
    for (guint i = 0; i < webkit_context_menu_get_n_items(menu); ++i) {
        WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
        if (webkit_context_menu_item_get_stock_action(item) ==
            WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW) {
            return i;
        }
    }
    return std::nullopt;
}

bool saves(WebKitContextMenuAction action) {
    switch (action) {
        case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK:
        case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK:
        case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK:
        case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK:
            return true;
        default:
            return false;
    }
}

void callChosen(GAction*, GVariant*, gpointer data) {
    (*static_cast<std::function<void()>*>(data))();
}

}  // namespace

void watchSaving(WebKitContextMenu* menu, std::function<void()> chosen) {
    for (guint i = 0; i < webkit_context_menu_get_n_items(menu); ++i) {
        WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
        if (!saves(webkit_context_menu_item_get_stock_action(item))) continue;
        g_signal_connect_data(
            webkit_context_menu_item_get_gaction(item), "activate", G_CALLBACK(callChosen),
            std::make_unique<std::function<void()>>(chosen).release(),
            [](gpointer data, GClosure*) { delete static_cast<std::function<void()>*>(data); },
            G_CONNECT_DEFAULT);
    }
}

void offerNewTab(WebKitContextMenu* menu, WebKitHitTestResult* hit,
                 std::function<void(const Url&)> open) {
    const auto place = placeOfOwnItem(menu);
    if (!place) return;
    webkit_context_menu_remove(menu, webkit_context_menu_get_item_at_position(menu, *place));
    const char* const link = webkit_hit_test_result_get_link_uri(hit);
    const auto url = link ? Url::parse(link) : std::nullopt;
    if (!url) return;
    GSimpleAction* const action = g_simple_action_new("openInNewTab", nullptr);
    g_signal_connect_data(
        action, "activate", G_CALLBACK(openLink),
        std::make_unique<LinkTarget>(*url, std::move(open)).release(),
        [](gpointer target, GClosure*) { delete static_cast<LinkTarget*>(target); },
        G_CONNECT_DEFAULT);
    webkit_context_menu_insert(
        menu,
        webkit_context_menu_item_new_from_gaction(G_ACTION(action), "Open in New Tab", nullptr),
        static_cast<gint>(*place));
    g_object_unref(action);
}

}  // namespace orvu
