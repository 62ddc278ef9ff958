#include "platform/linux/web/EngineMenu.h"

#include "platform/linux/GObjectPointer.h"
#include "platform/linux/web/LinkReferrer.h"
#include "platform/linux/web/PageScript.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace orvu {
namespace {

/// What is selected in the frame that has the focus, as far as the page's origin reaches.
constexpr const char* selectionScript = R"js((() => {
    let page = document;
    for (let depth = 0; depth < 8 && page.activeElement?.contentDocument; ++depth) {
        page = page.activeElement.contentDocument;
    }
    const field = page.activeElement;
    const isText = field?.matches('textarea, input:not([type=password])');
    const inField = isText && typeof field.selectionStart === 'number' &&
        field.value.slice(field.selectionStart, Math.min(field.selectionEnd,
                                                         field.selectionStart + 4000));
    return inField || page.getSelection()?.toString().slice(0, 4000) || '';
})())js";

/// The engine's own way to do what an entry says.
struct EngineItem {
    PageMenuItem item;
    WebKitContextMenuAction action;
};

constexpr std::array<EngineItem, 11> engineItems{
    {{PageMenuItem::copyLink, WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD},
     {PageMenuItem::saveLink, WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK},
     {PageMenuItem::copyImage, WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD},
     {PageMenuItem::saveImage, WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK},
     {PageMenuItem::cut, WEBKIT_CONTEXT_MENU_ACTION_CUT},
     {PageMenuItem::copy, WEBKIT_CONTEXT_MENU_ACTION_COPY},
     {PageMenuItem::paste, WEBKIT_CONTEXT_MENU_ACTION_PASTE},
     {PageMenuItem::pastePlain, WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT},
     {PageMenuItem::erase, WEBKIT_CONTEXT_MENU_ACTION_DELETE},
     {PageMenuItem::selectAll, WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL},
     {PageMenuItem::inspect, WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT}}};

/// Which groups of the engine's items are taken as they are.
constexpr std::array spellingActions{
    WEBKIT_CONTEXT_MENU_ACTION_SPELLING_GUESS, WEBKIT_CONTEXT_MENU_ACTION_NO_GUESSES_FOUND,
    WEBKIT_CONTEXT_MENU_ACTION_IGNORE_SPELLING, WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING};
constexpr std::array mediaActions{WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PLAY,
                                  WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PAUSE,
                                  WEBKIT_CONTEXT_MENU_ACTION_MEDIA_MUTE,
                                  WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_CONTROLS,
                                  WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_LOOP,
                                  WEBKIT_CONTEXT_MENU_ACTION_ENTER_VIDEO_FULLSCREEN,
                                  WEBKIT_CONTEXT_MENU_ACTION_COPY_VIDEO_LINK_TO_CLIPBOARD,
                                  WEBKIT_CONTEXT_MENU_ACTION_COPY_AUDIO_LINK_TO_CLIPBOARD,
                                  WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK,
                                  WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK};

std::optional<Url> urlOf(const char* text) { return text ? Url::parse(text) : std::nullopt; }

bool saves(WebKitContextMenuAction action) {
    return action == WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK ||
           action == WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK ||
           action == WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK ||
           action == WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK;
}

/// The engine's menu as it came, which is taken apart to build ours of it.
class Parts {
public:
    explicit Parts(WebKitContextMenu* menu) {
        for (GList* each = webkit_context_menu_get_items(menu); each; each = each->next) {
            items_.push_back(GObjectPointer<WebKitContextMenuItem>::retain(
                WEBKIT_CONTEXT_MENU_ITEM(each->data)));
        }
        webkit_context_menu_remove_all(menu);
    }
    [[nodiscard]] std::vector<WebKitContextMenuItem*> all(const auto& actions) const {
        std::vector<WebKitContextMenuItem*> found;
        for (const auto& item : items_) {
            const auto action = webkit_context_menu_item_get_stock_action(item.get());
            if (std::ranges::find(actions, action) != actions.end()) found.push_back(item.get());
        }
        return found;
    }
    [[nodiscard]] bool has(WebKitContextMenuAction action) const {
        return !all(std::array{action}).empty();
    }

private:
    std::vector<GObjectPointer<WebKitContextMenuItem>> items_;
};

/// Calls `act` when the item's action is chosen, as long as that exists.
void onChosen(gpointer action, std::function<void()> act) {
    using Held = std::function<void()>;
    const auto call = +[](GAction*, GVariant*, gpointer data) { (*static_cast<Held*>(data))(); };
    g_signal_connect_data(
        action, "activate", G_CALLBACK(call), std::make_unique<Held>(std::move(act)).release(),
        [](gpointer data, GClosure*) { delete static_cast<Held*>(data); }, G_CONNECT_DEFAULT);
}

/// An item that does nothing but `act`.
WebKitContextMenuItem* ownItem(const PageMenuEntry& entry, std::function<void()> act) {
    static unsigned number = 0;  // the engine tells actions apart by their names
    const std::string name = "pageMenu" + std::to_string(++number);
    const auto action =
        GObjectPointer<GSimpleAction>::adopt(g_simple_action_new(name.c_str(), nullptr));
    g_simple_action_set_enabled(action.get(), static_cast<gboolean>(entry.isEnabled));
    onChosen(action.get(), std::move(act));
    return webkit_context_menu_item_new_from_gaction(G_ACTION(action.get()), entry.title.c_str(),
                                                     nullptr);
}

/// The engine's item for what an entry says; null where it has none, or doesn't offer it here.
WebKitContextMenuItem* engineItem(const PageMenuEntry& entry, const Parts& parts) {
    const auto found = std::ranges::find(engineItems, entry.item, &EngineItem::item);
    if (found == engineItems.end()) return nullptr;
    const bool isOffered = entry.item != PageMenuItem::pastePlain || parts.has(found->action);
    if (!isOffered) return nullptr;
    WebKitContextMenuItem* const item = webkit_context_menu_item_new_from_stock_action_with_label(
        found->action, entry.title.c_str());
    GAction* const action = webkit_context_menu_item_get_gaction(item);
    if (!entry.isEnabled && G_IS_SIMPLE_ACTION(action)) {
        g_simple_action_set_enabled(G_SIMPLE_ACTION(action), FALSE);
    }
    return item;
}

bool isEngines(PageMenuItem item) {
    return std::ranges::find(engineItems, item, &EngineItem::item) != engineItems.end();
}

}  // namespace

EngineMenu::EngineMenu(WebKitWebView* view, WebView& page, MainLoop& loop, Handlers handlers)
    : view_(view),
      page_(page),
      loop_(loop),
      handlers_(std::move(handlers)),
      presses_(GTK_EVENT_CONTROLLER(gtk_gesture_click_new())),
      keys_(gtk_event_controller_key_new()) {
    g_signal_connect(view_, "context-menu", G_CALLBACK(&EngineMenu::comes), this);
    gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(presses_), GDK_BUTTON_SECONDARY);
    const auto pressed = +[](GtkGestureClick* click, int, double, double, gpointer data) {
        static_cast<EngineMenu*>(data)->readSelection();
        gtk_gesture_set_state(GTK_GESTURE(click), GTK_EVENT_SEQUENCE_DENIED);
    };
    g_signal_connect(presses_, "pressed", G_CALLBACK(pressed), this);
    const auto key = +[](GtkEventControllerKey*, guint value, guint, GdkModifierType held,
                         gpointer data) -> gboolean {
        const bool withShift = value == GDK_KEY_F10 && (held & GDK_SHIFT_MASK) != 0;
        if (value == GDK_KEY_Menu || withShift) static_cast<EngineMenu*>(data)->readSelection();
        return FALSE;
    };
    g_signal_connect(keys_, "key-pressed", G_CALLBACK(key), this);
    for (GtkEventController* const controller : {presses_, keys_}) {
        gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);
        gtk_widget_add_controller(GTK_WIDGET(view_), controller);
    }
}

EngineMenu::~EngineMenu() {
    g_signal_handlers_disconnect_by_data(view_, this);
    for (GtkEventController* const controller : {presses_, keys_}) {
        g_signal_handlers_disconnect_by_data(controller, this);
        gtk_widget_remove_controller(GTK_WIDGET(view_), controller);
    }
}

gboolean EngineMenu::comes(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult* hit,
                           gpointer data) {
    static_cast<EngineMenu*>(data)->fill(menu, hit);
    return FALSE;
}

void EngineMenu::readSelection() {
    selection_.clear();
    const unsigned reading = ++reading_;
    runPageScript(view_, selectionScript,
                  [weak = std::weak_ptr{self_}, reading](const ScriptResult& result) {
                      const auto live = weak.lock();
                      if (!live || (*live)->reading_ != reading) return;
                      if (result.kind == ScriptResult::Kind::text)
                          (*live)->selection_ = result.text;
                  });
}

void EngineMenu::fill(WebKitContextMenu* menu, WebKitHitTestResult* hit) {
    Place where{urlOf(webkit_hit_test_result_get_link_uri(hit)),
                urlOf(webkit_hit_test_result_get_image_uri(hit)), selection_};
    const auto is = [context = webkit_hit_test_result_get_context(hit)](guint flag) {
        return (context & flag) != 0;
    };
    const PageMenuPlace place{
        .isLink = where.link.has_value(),
        .opensLink = where.link && handlers_.mayOpen(*where.link),
        .isImage = webkit_hit_test_result_context_is_image(hit) != FALSE,
        .opensImage = where.image && handlers_.mayOpen(*where.image),
        .isMedia = webkit_hit_test_result_context_is_media(hit) != FALSE,
        .isEditable = webkit_hit_test_result_context_is_editable(hit) != FALSE,
        .hasSelection = is(WEBKIT_HIT_TEST_RESULT_CONTEXT_SELECTION),
        .selection = where.selection,
        .canGoBack = page_.canGoBack(),
        .canGoForward = page_.canGoForward(),
        .isLoading = page_.isLoading(),
    };
    const auto choose = [weak = std::weak_ptr{self_}, where](PageMenuItem item) {
        if (const auto live = weak.lock()) (*live)->chosen(item, where);
    };
    const Parts parts{menu};
    const auto add = [&](WebKitContextMenuItem* item) {
        const auto action = webkit_context_menu_item_get_stock_action(item);
        if (action == WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING && !handlers_.learnsWords) return;
        if (saves(action)) {
            onChosen(webkit_context_menu_item_get_gaction(item),
                     [choose] { choose(PageMenuItem::saveLink); });
        }
        webkit_context_menu_append(menu, item);
    };
    for (const auto& group : pageMenu(place)) {
        const guint before = webkit_context_menu_get_n_items(menu);
        if (before > 0) webkit_context_menu_append(menu, webkit_context_menu_item_new_separator());
        for (const auto& entry : group) {
            if (entry.item == PageMenuItem::spelling) {
                std::ranges::for_each(parts.all(spellingActions), add);
            } else if (entry.item == PageMenuItem::media) {
                std::ranges::for_each(parts.all(mediaActions), add);
            } else if (!isEngines(entry.item)) {
                add(ownItem(entry, [choose, item = entry.item] { choose(item); }));
            } else if (WebKitContextMenuItem* const item = engineItem(entry, parts)) {
                add(item);
            }
        }
        // The engine may have nothing to say to a group.
        if (before > 0 && webkit_context_menu_get_n_items(menu) == before + 1) {
            webkit_context_menu_remove(menu, webkit_context_menu_last(menu));
        }
    }
}

void EngineMenu::chosen(PageMenuItem item, const Place& place) {
    const auto edit = [this](const char* command) {
        webkit_web_view_execute_editing_command(view_, command);
    };
    switch (item) {
        case PageMenuItem::goBack:
            return page_.goBack();
        case PageMenuItem::goForward:
            return page_.goForward();
        case PageMenuItem::reload:
            return page_.reload();
        case PageMenuItem::stopLoading:
            return page_.stopLoading();
        case PageMenuItem::undo:
            return edit(WEBKIT_EDITING_COMMAND_UNDO);
        case PageMenuItem::redo:
            return edit(WEBKIT_EDITING_COMMAND_REDO);
        case PageMenuItem::openLink:
            return place.link ? open(*place.link) : void();
        case PageMenuItem::openImage:
            return place.image ? open(*place.image) : void();
        case PageMenuItem::openLinkPrivately:
            if (!place.link || !isWebUrl(*place.link)) return;
            return handlers_.choose(
                {PageMenuChoice::Kind::openPrivately, place.link->absoluteString()});
        case PageMenuItem::search:
            return handlers_.choose({PageMenuChoice::Kind::search, searchTextOf(place.selection)});
        case PageMenuItem::saveLink:
            return handlers_.saves();
        default:
            return;  // the engine's own
    }
}

void EngineMenu::open(const Url& target) {
    if (!handlers_.mayOpen(target)) return;  // another page may stand there by now
    findLinkReferrer(view_, loop_, target,
                     [weak = std::weak_ptr{self_}, target](const std::optional<Url>& referrer) {
                         const auto live = weak.lock();
                         if (live) (*live)->handlers_.open({target, Initiator{referrer}});
                     });
}

}  // namespace orvu
