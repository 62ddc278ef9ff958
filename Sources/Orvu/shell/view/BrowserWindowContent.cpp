#include "shell/view/BrowserWindowContent.h"

#include "foundation/text/DisplayHost.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "profiles/ProfileLook.h"
#include "shell/WindowPlacement.h"

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace orvu {
namespace {

Color tintOf(const BrowserView& view) { return ProfileLook::at(view.profile().color).frame; }

std::unique_ptr<BrowserFrame> makeFrame(const BrowserView& view) {
    if (view.store().isPrivate()) return std::make_unique<BrowserFrame>();
    return std::make_unique<BrowserFrame>(tintOf(view));
}

}  // namespace

BrowserWindowContent::BrowserWindowContent(BrowserView& view)
    : view_(view),
      notch_(view.commandOpen, view.query),
      frame_(makeFrame(view)),
      topBar_(view),
      tabs_(view),
      page_(view),
      kesto_(view),
      scrim_([this] { view_.commandOpen.set(false); }),
      siteHead_(view),
      notchView_(notch_, view.sharedStore(), view.services(), siteHead_,
                 [this] { return topBar_.roomInTheMiddle(*this) - 2 * notchMargin; }),
      fullscreenNotice_(view.services().platform().loop),
      refresh_(*this, [this] { refresh(); }),
      watch_(view.store(), [this] { refresh_.mark(); }) {
    add_css_class("browser-view");
    set_child(*frame_);
    add_overlay(column_);
    set_measure_overlay(column_, true);
    bar_.set_child(topBar_);
    bar_.set_size_request(-1, WindowPlacement::topBarHeight);
    row_.add_css_class("window-row");
    row_.append(tabs_);
    row_.append(page_);
    row_.append(kesto_);
    column_.append(bar_);
    column_.append(row_);
    addNotch();
    view_.askUpdates.connectChanged(sigc::mem_fun(*this, &BrowserWindowContent::askUpdatesChanged));
    addFullscreenNotice();
    addSheets();
    view_.connectAreaMoveRequested(sigc::mem_fun(*this, &BrowserWindowContent::moveFocus));
    view_.fullscreenTab.connectChanged(
        sigc::mem_fun(*this, &BrowserWindowContent::fullscreenChanged));
    front_ = view_.store().active();
    static_cast<void>(page_.refresh());  // its process starts before the window is drawn
}

BrowserWindowContent::~BrowserWindowContent() { notify_callbacks(); }

void BrowserWindowContent::addNotch() {
    add_overlay(scrim_);
    add_overlay(notchView_);
    topBar_.connectRoomChanged(sigc::mem_fun(notchView_, &Gtk::Widget::queue_allocate));
    notch_.connectAsked(sigc::mem_fun(view_, &BrowserView::ask));
    notchView_.connectEditingEnded(sigc::mem_fun(view_, &BrowserView::focusPage));
    notchView_.connectProgress(sigc::mem_fun(scrim_, &NotchScrim::setShown));
    view_.connectAddressFocusRequested(sigc::mem_fun(notchView_, &AddressNotchView::focusField));
    // While the veil fades the window is the person's again.
    view_.commandOpen.connectChanged(
        sigc::track_object([this] { scrim_.set_can_target(view_.commandOpen.get()); }, *this));
}

void BrowserWindowContent::addFullscreenNotice() {
    fullscreenLabel_.add_css_class("fullscreen-notice");
    fullscreenLabel_.property_accessible_role() = Gtk::Accessible::Role::ALERT;
    fullscreenLabel_.set_halign(Gtk::Align::CENTER);
    fullscreenLabel_.set_valign(Gtk::Align::START);
    fullscreenLabel_.set_can_target(false);
    // The end of a host names who it belongs to.
    fullscreenLabel_.set_ellipsize(Pango::EllipsizeMode::START);
    fullscreenNotice_.connectChanged([this] {
        fullscreenLabel_.set_text(fullscreenNotice_.text());
        setAccessibleLabel(fullscreenLabel_, fullscreenNotice_.text());
        if (fullscreenNotice_.isShown()) {
            add_overlay(fullscreenLabel_);
        } else {
            remove_overlay(fullscreenLabel_);
        }
    });
    const auto motion = Gtk::EventControllerMotion::create();
    motion->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    motion->signal_motion().connect(
        [this](double, double y) { fullscreenNotice_.pointerMoved(y); });
    add_controller(motion);
}

void BrowserWindowContent::askUpdatesChanged() {
    if (!view_.askUpdates.get()) {
        if (!updateAsk_) return;
        if (holdsKeyboard(*updateAsk_)) view_.focusPage();
        return updateAsk_->leave();
    }
    if (!updateAsk_) {
        updateAsk_ = std::make_unique<UpdateAskView>(view_.updateAsk(), [this] {
            // A widget may not be taken out within a frame of its own.
            removesUpdateAsk_ = view_.services().platform().loop.after(
                std::chrono::milliseconds{0}, [this] { remove_overlay(*updateAsk_); });
        });
    }
    removesUpdateAsk_.cancel();
    updateAsk_->set_visible(!view_.fullscreenTab.get());
    updateAsk_->set_sensitive(!view_.sheetOpen.get());
    if (!updateAsk_->get_parent()) add_overlay(*updateAsk_);
    updateAsk_->enter();
}

void BrowserWindowContent::addSheets() {
    if (view_.store().isPrivate()) return;
    view_.services().profiles().connectChanged(
        sigc::track_object([this] { frame_->setGround(tintOf(view_)); }, *this));
    sheets_ = std::make_unique<ProfileSheets>(*view_.profileSwitcher());
    view_.sheetOpen.connectChanged(sigc::mem_fun(*this, &BrowserWindowContent::sheetChanged));
}

/// The keyboard is the sheet's alone, and the page's again afterwards.
void BrowserWindowContent::sheetChanged() {
    const bool open = view_.sheetOpen.get();
    if (open) view_.commandOpen.set(false);
    column_.set_can_focus(!open);
    notchView_.set_can_focus(!open);
    if (updateAsk_) updateAsk_->set_sensitive(!open);
    if (open) {
        add_overlay(*sheets_);
        sheets_->show();
    } else {
        remove_overlay(*sheets_);
        view_.focusPage();
    }
}

void BrowserWindowContent::refresh() {
    const auto tab = view_.store().active();
    const bool otherTab = tab != front_.lock();
    front_ = tab;
    const bool otherPage = page_.refresh();
    const bool keyboardStays = tabs_.takeFocusClaim();
    if (tab && (otherTab || otherPage) && !keyboardStays) focusNewFront();
}

void BrowserWindowContent::focusNewFront() {
    if (!view_.commandOpen.get() && !holdsKeyboard(kesto_)) view_.focusPage();
}

void BrowserWindowContent::moveFocus(int areas) {
    auto* const window = dynamic_cast<Gtk::Window*>(get_root());
    if (!window) return;
    gtk_window_set_focus_visible(window->gobj(), TRUE);
    std::vector<Gtk::Widget*> all{&bar_, &tabs_};
    for (Gtk::Widget* const part : page_.areas()) all.push_back(part);
    all.push_back(&page_);
    const auto page = static_cast<int>(all.size()) - 1;
    if (kesto_.isOpen()) all.push_back(&kesto_);
    if (view_.askUpdates.get()) all.push_back(updateAsk_.get());
    const auto found = std::ranges::find_if(all, [&](Gtk::Widget* area) {
        // The notch hangs over the bar and counts as a part of it.
        return holdsKeyboard(*area) || (area == &bar_ && holdsKeyboard(notchView_));
    });
    const auto count = static_cast<int>(all.size());
    const int previous = found == all.end() ? page : static_cast<int>(found - all.begin());
    Gtk::Widget* const next = all[static_cast<std::size_t>((previous + areas + count) % count)];
    if (next != &bar_) view_.commandOpen.set(false);
    if (next == &bar_) {
        activate_action("win.editAddress");
    } else if (next == &page_) {
        view_.focusPage();
    } else if (next == &kesto_) {
        kesto_.focusField();
    } else {
        next->child_focus(Gtk::DirectionType::TAB_FORWARD);
    }
}

void BrowserWindowContent::fullscreenChanged() {
    const bool on = view_.fullscreenTab.get().has_value();
    if (on) view_.commandOpen.set(false);
    notchView_.setHidden(on);
    bar_.set_visible(!on);
    tabs_.set_visible(!on);
    kesto_.setHidden(on);
    if (updateAsk_) updateAsk_->set_visible(!on);
    setCssClass(*this, "element-fullscreen", on);
    const auto tab = on ? view_.store().tab(*view_.fullscreenTab.get()) : nullptr;
    if (tab) {
        fullscreenNotice_.begin(displayHost(tab->host()));
    } else {
        fullscreenNotice_.end();
    }
}

}  // namespace orvu
