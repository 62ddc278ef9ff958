#include "notch/view/AddressNotchView.h"

#include "look/Desk.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "look/drawing/view/Drawing.h"
#include "notch/view/Entrance.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/root.h>
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvu {
namespace {

constexpr NotchShape restingShape{20, AddressNotchBody::ear};
constexpr NotchShape openShape{30, AddressNotchBody::ear};
/// The open notch stays clear of the window's lower edge.
constexpr int lowerMargin = 16;
constexpr int earWidth = static_cast<int>(AddressNotchBody::ear);

constexpr double shadowRadius = 16;
constexpr double shadowOpacity = 0.3;
constexpr double shadowDrop = 4;

graphene_rect_t rectangle(double x, double y, double width, double height) {
    return {{static_cast<float>(x), static_cast<float>(y)},
            {static_cast<float>(width), static_cast<float>(height)}};
}

GskRoundedRect hanging(double x, double y, double width, double height, double radius) {
    GskRoundedRect result;
    const graphene_rect_t bounds = rectangle(x, y, width, height);
    const auto r = static_cast<float>(radius);
    const graphene_size_t none{0, 0};
    const graphene_size_t round{r, r};
    gsk_rounded_rect_init(&result, &bounds, &none, &none, &round, &round);
    return result;
}

}  // namespace

AddressNotchView::AddressNotchView(AddressNotch& notch, std::shared_ptr<BrowserStore> store,
                                   AppServices& services, Gtk::Widget& badge,
                                   std::function<int()> restingRoom)
    : notch_(notch),
      store_(std::move(store)),
      services_(services),
      restingRoom_(std::move(restingRoom)),
      resting_(*store_, badge, [this](const std::string& address) { notch_.open(address); }),
      bar_(notch_, *store_),
      open_(*this, Motion::open, 0, [this](double) { step(); }),
      height_(
          *this, Motion::snappy, 0, [this](double) { queue_draw(); }, 0.3),
      refresh_(*this, [this] { refresh(); }),
      watch_(*store_, [this] { refresh_.mark(); }) {
    add_css_class("notch");
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::START);
    keepKeyboard();
    resting_.set_parent(*this);
    bar_.set_parent(*this);
    bar_.set_visible(false);
    bookmarksChanged_ = store_->bookmarks().connectChanged([this] { refresh_.mark(); });
    notchChanged_ = notch_.connectChanged([this] { notchChanged(); });
    refresh();
    notchChanged();
}

AddressNotchView::~AddressNotchView() {
    notify_callbacks();
    bar_.unparent();
    resting_.unparent();
}

void AddressNotchView::focusField() {
    if (isOpen_ && body_) bar_.focusField();
}

void AddressNotchView::setHidden(bool hidden) {
    isHidden_ = hidden;
    updateVisible();
}

void AddressNotchView::notchChanged() {
    refresh_.mark();
    if (notch_.isOpen() == isOpen_) return;
    isOpen_ = notch_.isOpen();
    // At once and not with the next frame: the next key belongs to the field, or to the page.
    if (isOpen_) {
        showOpen();
    } else {
        showClosed();
    }
}

void AddressNotchView::showOpen() {
    followTab();
    if (!body_) return;
    updateVisible();
    body_->refresh();
    bar_.refresh();
    bar_.set_can_target(true);
    bar_.set_visible(true);
    bar_.focusField();
    open_.animateTo(1);
}

void AddressNotchView::showClosed() {
    const bool hadKeyboard = holdsKeyboard(*this);
    resting_.set_visible(true);
    bar_.set_can_target(false);
    open_.animateTo(0);
    if (hadKeyboard) editingEnded_.emit();
}

void AddressNotchView::followTab() {
    const auto tab = store_->active();
    if (body_ && body_->tab() == tab) return;
    bodyChanged_ = {};
    auto previous = std::move(body_);
    if (tab) {
        body_ = std::make_unique<AddressNotchBody>(notch_, store_, tab, snapshot_, services_,
                                                   services_.makeSuggestions());
        bodyChanged_ = body_->connectChanged([this] { refresh_.mark(); });
        bar_.setBody(*body_);
        if (isOpen_ && previous) bar_.focusField();
    }
    previous.reset();
}

void AddressNotchView::refresh() {
    followTab();
    updateVisible();
    if (!body_) return;
    resting_.refresh(*body_->tab());
    if (!isOpen_) return;
    body_->refresh();
    bar_.refresh();
}

void AddressNotchView::updateVisible() {
    set_visible(body_ && (!isHidden_ || isOpen_ || bar_.get_visible()));
}

void AddressNotchView::step() {
    const double progress = open_.value();
    if (progress <= 0 && !isOpen_) {
        bar_.set_visible(false);
        updateVisible();
    }
    if (progress >= 1 && isOpen_) resting_.set_visible(false);
    progress_.emit(std::clamp(progress, 0.0, 1.0));
    queue_draw();
}

Gtk::SizeRequestMode AddressNotchView::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

void AddressNotchView::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                     int& natural, int& minimumBaseline,
                                     int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    if (orientation == Gtk::Orientation::HORIZONTAL) {
        minimum = 1;
        natural = openWidth;
        return;
    }
    minimum = NotchRestingView::height;
    natural = minimum;
    if (!bar_.get_visible()) return;
    int least = 0;
    int barNatural = 0;
    int none = 0;
    const int width = forSize < 0 ? openWidth : std::min(forSize, openWidth);
    bar_.measure(orientation, std::max(width - 2 * earWidth, 1), least, barNatural, none, none);
    natural = std::max(natural, barNatural);
}

void AddressNotchView::size_allocate_vfunc(int width, int height, int) {
    const int room = restingRoom_();
    restingSpace_ = std::clamp(room, std::min(width, 4 * earWidth), std::min(width, restingWidth));
    const int inner = std::max(restingSpace_ - 2 * earWidth, 1);
    if (resting_.get_visible()) {
        int least = 0;
        int barNatural = 0;
        int none = 0;
        resting_.measure(Gtk::Orientation::HORIZONTAL, -1, least, barNatural, none, none);
        const int taken = std::max(inner, least);
        resting_.size_allocate({(width - taken) / 2, 0, taken, NotchRestingView::height}, -1);
    }
    if (!bar_.get_visible()) return;
    const int below = get_parent() ? get_parent()->get_height() - lowerMargin : height;
    const int taken = std::min(height, std::max(below, NotchRestingView::height));
    bar_.size_allocate({earWidth, 0, std::max(width - 2 * earWidth, 1), taken}, -1);
    if (taken == barHeight_) return;
    const bool wasOpening = open_.value() < 0.5;
    barHeight_ = taken;
    if (wasOpening) {
        height_.jumpTo(taken);
    } else {
        height_.animateTo(taken);
    }
}

AddressNotchView::Outline AddressNotchView::outline() const {
    const double open = open_.value();
    const double whole = get_width();
    const double width = std::lerp(static_cast<double>(restingSpace_), whole, open);
    const double height =
        std::lerp(static_cast<double>(NotchRestingView::height), height_.value(), open);
    return {(whole - width) / 2, width, height,
            NotchShape::between(restingShape, openShape, std::clamp(open, 0.0, 1.0))};
}

void AddressNotchView::drawShape(const Glib::RefPtr<Gtk::Snapshot>& snapshot,
                                 const Outline& outline, double open) {
    const double body = outline.width - 2 * outline.shape.ear;
    const double radius = outline.shape.radius(outline.width, outline.height);
    GtkSnapshot* const target = snapshot->gobj();
    if (open > 0) {
        // Nothing of the shadow falls on the window's upper edge, where the notch is fixed.
        const double reach = 3 * shadowRadius;
        const graphene_rect_t below =
            rectangle(outline.x - reach, 0, outline.width + 2 * reach, outline.height + 2 * reach);
        gtk_snapshot_push_clip(target, &below);
        const GskRoundedRect caster =
            hanging(outline.x + outline.shape.ear, -reach, body, outline.height + reach, radius);
        const Gdk::RGBA color = rgba({Color{0, 0, 0}, shadowOpacity * open});
        gtk_snapshot_append_outset_shadow(target, &caster, color.gobj(), 0, shadowDrop, 0,
                                          2 * shadowRadius);
        gtk_snapshot_pop(target);
    }
    const graphene_rect_t bounds = rectangle(outline.x, 0, outline.width, outline.height);
    const auto context = snapshot->append_cairo(&bounds);
    context->translate(outline.x, 0);
    addPath(context, outline.shape.outline(outline.width, outline.height));
    setSource(context, {Desk::black});
    context->fill();
}

void AddressNotchView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const double progress = open_.value();
    const double open = std::clamp(progress, 0.0, 1.0);
    const Outline now = outline();
    if (now.width <= 0 || now.height <= 0) return;
    drawShape(snapshot, now, open);
    GtkSnapshot* const target = snapshot->gobj();
    const GskRoundedRect inside = hanging(now.x + now.shape.ear, 0, now.width - 2 * now.shape.ear,
                                          now.height, now.shape.radius(now.width, now.height));
    gtk_snapshot_push_rounded_clip(target, &inside);
    if (resting_.get_visible()) {
        gtk_snapshot_push_opacity(target, 1 - open);
        snapshot_child(resting_, snapshot);
        gtk_snapshot_pop(target);
    }
    if (bar_.get_visible()) {
        drawEntrance(snapshot, progress, get_width(), [&] { snapshot_child(bar_, snapshot); });
    }
    gtk_snapshot_pop(target);
}

bool AddressNotchView::contains_vfunc(double x, double y) const {
    const Outline now = outline();
    const double left = now.x + now.shape.ear;
    const double right = now.x + now.width - now.shape.ear;
    if (x < left || x >= right || y < 0 || y >= now.height) return false;
    const double radius = now.shape.radius(now.width, now.height);
    const double beside = std::max({left + radius - x, x - (right - radius), 0.0});
    const double below = std::max(y - (now.height - radius), 0.0);
    return std::hypot(beside, below) <= radius;
}

void AddressNotchView::keepKeyboard() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (!isOpen_) return false;
            if (key == GDK_KEY_Tab) return moveFocus(Gtk::DirectionType::TAB_FORWARD);
            if (key == GDK_KEY_ISO_Left_Tab) return moveFocus(Gtk::DirectionType::TAB_BACKWARD);
            return false;
        },
        false);
    add_controller(keys);
}

bool AddressNotchView::moveFocus(Gtk::DirectionType direction) {
    const Gtk::Widget* const previous = focusOf(*this);
    // Backwards from the field the focus is said to have moved, and stands where it was.
    if (bar_.child_focus(direction) && focusOf(*this) != previous) return true;
    // Behind the open bar's last control comes its first.
    get_root()->unset_focus();
    return bar_.child_focus(direction);
}

}  // namespace orvu
