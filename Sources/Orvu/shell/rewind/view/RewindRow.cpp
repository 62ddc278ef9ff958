#include "shell/rewind/view/RewindRow.h"

#include "look/text/OneLine.h"
#include "look/view/Accessible.h"

#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollermotion.h>

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 200;
constexpr int spacing = 10;

}  // namespace

RewindRow::RewindRow(const BrowserStore& store, const Visit& visit, const std::string& time,
                     const Actions& actions)
    : line_(Gtk::Orientation::HORIZONTAL, spacing), icon_(store.icons(), iconSize) {
    const std::string title = oneLine(visit.title, titleLimit);
    add_css_class("rewind-row");
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    setAccessibleLabel(*this, title + ", " + time);
    icon_.setHost(visit.url.host().value_or(""));
    icon_.set_valign(Gtk::Align::CENTER);
    title_.set_text(title);
    title_.set_ellipsize(Pango::EllipsizeMode::END);
    title_.set_single_line_mode(true);
    title_.set_hexpand(true);
    title_.set_xalign(0);
    time_.add_css_class("rewind-row-time");
    time_.set_text(time);
    hideFromAccessibility(line_);  // the button says it all
    line_.append(icon_);
    line_.append(title_);
    line_.append(time_);
    set_child(line_);
    signal_clicked().connect(actions.choose);
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_enter().connect([enter = actions.enter](double, double) { enter(); });
    motion->signal_leave().connect(actions.leave);
    add_controller(motion);
    const auto focus = Gtk::EventControllerFocus::create();
    focus->signal_enter().connect(actions.enter);
    focus->signal_leave().connect(actions.leave);
    add_controller(focus);
}

}  // namespace orvu
