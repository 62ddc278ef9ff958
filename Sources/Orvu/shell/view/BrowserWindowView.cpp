#include "shell/view/BrowserWindowView.h"

#include "look/view/CssClass.h"
#include "platform/linux/desktop/X11Placement.h"
#include "profiles/ProfileLook.h"
#include "shell/menus/Commands.h"
#include "shell/menus/KeySigns.h"
#include "shell/TabCloser.h"

#include <gtkmm/text.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include <string_view>
#include <utility>

namespace orvu {
namespace {

/// Whether the engine scrolls with a key, so that it never gives it back, whatever the page does.
bool isKeptByEngine(std::string_view keys) { return keys == "⌥Left" || keys == "⌥Right"; }

/// Whether a field takes a key: to do again what was undone in it.
bool isTakenByFields(std::string_view keys) { return keys == "⌘Y"; }

/// The toolkit's own inspector has the keys of the page's.
void switchOffDebugging(Gtk::Window& window) {
    const auto refuse = +[](GtkWindow* refusing, gboolean, gpointer) -> gboolean {
        g_signal_stop_emission_by_name(refusing, "enable-debugging");
        return FALSE;
    };
    g_signal_connect(window.gobj(), "enable-debugging", G_CALLBACK(refuse), nullptr);
}

bool isPress(GdkEventType type) {
    return type == GDK_KEY_PRESS || type == GDK_BUTTON_PRESS || type == GDK_TOUCH_BEGIN ||
           type == GDK_SCROLL;
}

}  // namespace

BrowserWindowView::BrowserWindowView(Gtk::Application& application, BrowserView::Shared shared,
                                     BrowserWindowController& windows,
                                     const BrowserWindowTraits& traits,
                                     std::function<void()> closed)
    : shared_(shared), services_(shared_.services), windows_(windows), closed_(std::move(closed)) {
    window_.set_title(std::string{traits.title});
    window_.add_css_class("orvu");
    invisibleTitlebar_.set_visible(false);
    window_.set_titlebar(invisibleTitlebar_);  // edges and shadow, but no bar of the toolkit's
    window_.set_default_size(WindowPlacement::contentSize.width,
                             WindowPlacement::contentSize.height);
    window_.set_size_request(WindowPlacement::minimumSize.width,
                             WindowPlacement::minimumSize.height);
    application.add_window(window_);
    addCommands();
    addEscape();
    switchOffDebugging(window_);
    noticePresses();
    services_.profiles().connectChanged(sigc::mem_fun(*this, &BrowserWindowView::showLook));
    window_.signal_close_request().connect(sigc::mem_fun(*this, &BrowserWindowView::closeRequested),
                                           false);
}

BrowserWindowView::~BrowserWindowView() {
    notify_callbacks();  // the window changes its size once more when it goes
    if (frameIsUnsaved_) saveFrame();
    window_.unset_child();
}

void BrowserWindowView::setContent(const std::shared_ptr<BrowserStore>& store) {
    window_.unset_child();
    content_.reset();
    // What the person made of the column stays with the window.
    const bool narrow = view_ ? view_->narrow.get() : services_.settings().narrowTabs.get();
    view_ = std::make_unique<BrowserView>(
        store, shared_, *this,
        [this](const Profile& profile) { windows_.switchProfile(view_->store(), profile); },
        narrow ? BrowserView::Narrow::yes : BrowserView::Narrow::no);
    content_ = std::make_unique<BrowserWindowContent>(*view_);
    window_.set_child(*content_);
    view_->focusPage();
    view_->sheetOpen.connectChanged(sigc::mem_fun(*this, &BrowserWindowView::holdCommands));
    holdCommands();
    showLook();
}

/// A window under a sheet does nothing: its keys go to the sheet.
void BrowserWindowView::holdCommands() {
    const bool mayRun = !view_->sheetOpen.get();
    for (const Command& command : commands()) {
        const auto action = window_.lookup_action(command.name);
        if (action) g_simple_action_set_enabled(G_SIMPLE_ACTION(action->gobj()), mayRun);
    }
}

void BrowserWindowView::showLook() {
    if (!view_) return;
    const BrowserStore& store = view_->store();
    setCssClass(window_, "private", store.isPrivate());
    const auto& looks = ProfileLook::all;
    for (std::size_t look = 0; look < looks.size(); ++look) {
        window_.remove_css_class("look-" + std::to_string(look));
    }
    const auto index = &ProfileLook::at(view_->profile().color) - looks.data();
    if (!store.isPrivate()) window_.add_css_class("look-" + std::to_string(index));
}

bool BrowserWindowView::isVisible() const { return window_.get_visible() && window_.get_mapped(); }

bool BrowserWindowView::isKey() const { return window_.is_active(); }

std::optional<Point> BrowserWindowView::topLeft() const {
    return windowTopLeft(GTK_WINDOW(const_cast<GtkApplicationWindow*>(window_.gobj())));
}

void BrowserWindowView::present() {
    const bool first = !window_.get_mapped();
    window_.present();
    if (first && place_) moveWindow(GTK_WINDOW(window_.gobj()), *place_);
}

void BrowserWindowView::edit(EditingCommand command) {
    if (editInFocus(window_, command)) return;
    // The menu in which it was chosen has the keyboard until it is closed.
    edits_ = services_.platform().loop.after(std::chrono::milliseconds{0}, [this, command] {
        static_cast<void>(editInFocus(window_, command));
    });
}

void BrowserWindowView::performZoom() {
    if (window_.is_maximized()) {
        window_.unmaximize();
    } else {
        window_.maximize();
    }
}

void BrowserWindowView::toggleFullScreen() {
    if (window_.is_fullscreen()) {
        window_.unfullscreen();
    } else {
        window_.fullscreen();
    }
}

void BrowserWindowView::addCommands() {
    for (const Command& command : commands()) {
        if (command.isForGroup()) continue;
        if (!command.isForApplication()) {
            window_.add_action(command.name, [this, &command] { command.runIn(*view_); });
        }
        if (command.keysOf == Command::KeysOf::focus) continue;
        for (const auto* const keys : {&command.keys, &command.alias}) {
            for (const auto& key : *keys) addShortcut(command, key);
        }
    }
}

/// Says what the person presses, wherever in the window.
void BrowserWindowView::noticePresses() {
    const auto heard = +[](GtkEventController*, GdkEvent* event, gpointer data) -> gboolean {
        const Platform& platform = static_cast<AppServices*>(data)->platform();
        if (isPress(gdk_event_get_event_type(event))) {
            platform.activity.pressed(platform.loop.now());
        }
        return FALSE;
    };
    GtkEventController* const controller = gtk_event_controller_legacy_new();
    gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);
    g_signal_connect(controller, "event", G_CALLBACK(heard), &services_);
    gtk_widget_add_controller(GTK_WIDGET(window_.gobj()), controller);
}

void BrowserWindowView::addEscape() {
    auto escape = Gtk::ShortcutController::create();
    escape->add_shortcut(Gtk::Shortcut::create(
        Gtk::ShortcutTrigger::parse_string("Escape"),
        Gtk::CallbackAction::create(
            [this](Gtk::Widget&, const Glib::VariantBase&) { return view_->endEditing(); })));
    window_.add_controller(escape);
}

void BrowserWindowView::addShortcut(const Command& command, const std::string& keys) {
    auto controller = Gtk::ShortcutController::create();
    // Before the page, which could swallow every key; or what the page left.
    const bool before = command.keysOf == Command::KeysOf::window || isKeptByEngine(keys);
    controller->set_propagation_phase(before ? Gtk::PropagationPhase::CAPTURE
                                             : Gtk::PropagationPhase::BUBBLE);
    controller->set_scope(Gtk::ShortcutScope::LOCAL);
    controller->add_shortcut(
        Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(shortcutTrigger(keys)),
                              Gtk::NamedAction::create(command.action())));
    window_.add_controller(controller);
    if (!before && isTakenByFields(keys)) addShortcutInFields(command, keys);
}

/// Acts on keys that a field of the window would take, though it has no use for them.
void BrowserWindowView::addShortcutInFields(const Command& command, const std::string& keys) {
    auto controller = Gtk::ShortcutController::create();
    controller->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    const auto act = [this, &command](Gtk::Widget&, const Glib::VariantBase&) {
        return dynamic_cast<Gtk::Text*>(window_.get_focus()) &&
               window_.activate_action(command.action());
    };
    controller->add_shortcut(
        Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(shortcutTrigger(keys)),
                              Gtk::CallbackAction::create(act)));
    window_.add_controller(controller);
}

void BrowserWindowView::rememberFrame() {
    if (const auto frame = WindowFrame::parse(services_.settings().orvuWindow.get())) {
        window_.set_default_size(frame->size.width, frame->size.height);
        if (frame->maximized) window_.maximize();
    }
    remembersFrame_ = true;
    const auto changed = sigc::mem_fun(*this, &BrowserWindowView::frameChanged);
    window_.property_default_width().signal_changed().connect(changed);
    window_.property_default_height().signal_changed().connect(changed);
    window_.property_maximized().signal_changed().connect(changed);
}

void BrowserWindowView::frameChanged() {
    // An edge that is dragged changes the size with every frame.
    frameIsUnsaved_ = true;
    savesFrame_ =
        services_.platform().loop.after(std::chrono::milliseconds{250}, [this] { saveFrame(); });
}

void BrowserWindowView::saveFrame() {
    savesFrame_.cancel();
    frameIsUnsaved_ = false;
    int width = 0;
    int height = 0;
    window_.get_default_size(width, height);
    if (width <= 0 || height <= 0) return;
    services_.settings().orvuWindow.set(
        WindowFrame{{width, height}, window_.is_maximized()}.string());
}

bool BrowserWindowView::closeRequested() {
    TabCloser{view_->store()}.whenAllMayGo(sigc::mem_fun(*this, &BrowserWindowView::present),
                                           sigc::mem_fun(*this, &BrowserWindowView::close));
    return true;
}

void BrowserWindowView::close() {
    if (remembersFrame_) saveFrame();
    window_.set_visible(false);
    // The window's own signal is still on the stack; it goes in a turn of its own.
    closes_ = services_.platform().loop.after(std::chrono::milliseconds{0}, closed_);
}

}  // namespace orvu
