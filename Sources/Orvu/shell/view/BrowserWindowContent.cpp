#include "shell/view/BrowserWindowContent.h"

#include "look/view/CssClass.h"
#include "profiles/ProfileLook.h"
#include "shell/WindowPlacement.h"

#include <gtkmm/root.h>

#include <algorithm>
#include <vector>

namespace orvu {
namespace {

std::unique_ptr<BrowserFrame> makeFrame(const BrowserStore& store) {
    if (store.isPrivate()) return std::make_unique<BrowserFrame>();
    return std::make_unique<BrowserFrame>(ProfileLook::at(store.profile().color).frame);
}

}  // namespace

BrowserWindowContent::BrowserWindowContent(const std::shared_ptr<BrowserStore>& store,
                                           NarrowColumn& narrow, AppServices& services)
    : store_(store),
      frame_(makeFrame(*store)),
      topBar_(store, services.downloads()),
      tabs_(store, narrow),
      page_(store),
      scrim_([this] { notch_.close(); }),
      notchView_(notch_, store, services),
      refresh_(*this, [this] { refresh(); }),
      watch_(*store, [this] { refresh_.mark(); }) {
    add_css_class("browser-view");
    set_child(*frame_);
    add_overlay(column_);
    set_measure_overlay(column_, true);
    bar_.set_child(topBar_);
    bar_.set_size_request(-1, WindowPlacement::topBarHeight);
    row_.add_css_class("window-row");
    row_.append(tabs_);
    row_.append(page_);
    column_.append(bar_);
    column_.append(row_);
    page_.onFullscreen = [this](bool on) { setElementFullscreen(on); };
    topBar_.navigation().setOnKeyboardLeft([this] { page_.focusContent(); });
    addNotch();
    front_ = store_->active();
    static_cast<void>(page_.refresh());  // its process starts before the window is drawn
}

BrowserWindowContent::~BrowserWindowContent() {
    notify_callbacks();
    page_.onFullscreen = nullptr;
    topBar_.onRoomChanged = nullptr;
    topBar_.navigation().setOnKeyboardLeft(nullptr);
    notchView_.onEditingEnded = nullptr;
    notchView_.onProgress = nullptr;
}

void BrowserWindowContent::addNotch() {
    add_overlay(scrim_);
    add_overlay(notchView_);
    notchView_.restingRoom = [this] { return topBar_.roomInTheMiddle(*this) - 2 * notchMargin; };
    topBar_.onRoomChanged = [this] { notchView_.queue_allocate(); };
    notchView_.onEditingEnded = [this] { page_.focusContent(); };
    notchView_.onProgress = [this](double open) { scrim_.setShown(open); };
    // While the veil fades the window is the person's again.
    notch_.connectChanged([this] { scrim_.set_can_target(notch_.isOpen()); });
}

void BrowserWindowContent::refresh() {
    const auto tab = store_->active();
    const bool otherTab = tab != front_.lock();
    front_ = tab;
    const bool otherPage = page_.refresh();
    const bool keyboardStays = tabs_.takeFocusClaim();
    if (tab && (otherTab || otherPage) && !keyboardStays) focusNewFront();
}

void BrowserWindowContent::focusNewFront() {
    if (!notch_.isOpen()) page_.focusContent();
}

void BrowserWindowContent::editAddress(const std::string& text) {
    notch_.open(text);
    notchView_.focusField();
}

bool BrowserWindowContent::endEditing() {
    const bool wasOpen = notch_.isOpen() || page_.showsFind();
    notch_.close();
    page_.closeFind();
    if (wasOpen) return true;
    const auto tab = store_->active();
    if (!tab || !tab->captureQuestion()) return false;
    tab->answerCapture(CaptureAnswer::dismiss);
    return true;
}

void BrowserWindowContent::moveFocus(int areas) {
    std::vector<Gtk::Widget*> all{&bar_, &tabs_, &page_};
    for (Gtk::Widget* const part : {page_.divider(), page_.question()}) {
        if (part) all.insert(all.end() - 1, part);
    }
    const Gtk::Widget* const focus = get_root() ? get_root()->get_focus() : nullptr;
    const auto holdsFocus = [&](Gtk::Widget& area) {
        return focus == &area || (focus && focus->is_ancestor(area));
    };
    const auto found = std::ranges::find_if(all, [&](Gtk::Widget* area) {
        // The notch hangs over the bar and counts as a part of it.
        return holdsFocus(*area) || (area == &bar_ && holdsFocus(notchView_));
    });
    const auto count = static_cast<int>(all.size());
    const int previous = found == all.end() ? count - 1 : static_cast<int>(found - all.begin());
    Gtk::Widget* const next = all[static_cast<std::size_t>((previous + areas + count) % count)];
    if (next != &bar_) notch_.close();
    if (next == &bar_) {
        activate_action("win.editAddress");
    } else if (next == &page_) {
        page_.focusContent();
    } else {
        next->child_focus(Gtk::DirectionType::TAB_FORWARD);
    }
}

void BrowserWindowContent::setElementFullscreen(bool on) {
    notch_.close();
    notchView_.setHidden(on);
    bar_.set_visible(!on);
    tabs_.set_visible(!on);
    setCssClass(*this, "element-fullscreen", on);
}

}  // namespace orvu
