#include "shell/column/view/GroupHeader.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/window.h>

#include <algorithm>

namespace orvu {
namespace {

constexpr std::size_t nameLimit = 60;

std::string colorClass(int color) {
    const bool known = color >= 0 && static_cast<std::size_t>(color) < TabGroup::groupColors.size();
    return "group-color-" + std::to_string(known ? color : 0);
}

}  // namespace

GroupHeader::GroupHeader(BrowserStore& store, const Uuid& group)
    : store_(store), group_(group), editing_(store, group) {
    add_css_class("group-header");
    for (auto& dot : dots_) {
        dot.add_css_class("group-dot");
        dot.set_valign(Gtk::Align::CENTER);
        hideFromAccessibility(dot);
    }
    for (auto& chevron : chevrons_) {
        setSymbol(chevron, "chevron.down", 9);
        chevron.add_css_class("group-chevron");
        chevron.set_valign(Gtk::Align::CENTER);
    }
    addButton();
    addField();
    addDot();
    showField(false);
    setTabStop(TabStop::no);
}

GroupHeader::~GroupHeader() {
    notify_callbacks();  // the field loses the keyboard once more when it goes
}

void GroupHeader::addButton() {
    name_.set_ellipsize(Pango::EllipsizeMode::END);
    name_.set_single_line_mode(true);
    name_.add_css_class("group-name");
    count_.add_css_class("group-count");
    count_.set_hexpand(true);
    count_.set_xalign(0);
    content_.add_css_class("group-line");
    hideFromAccessibility(content_);  // the button is one element
    content_.append(dots_[0]);
    content_.append(name_);
    content_.append(count_);
    content_.append(chevrons_[0]);
    button_.set_child(content_);
    button_.add_css_class("group-button");
    button_.set_hexpand(true);
    button_.set_focus_on_click(false);
    button_.signal_clicked().connect(sigc::mem_fun(*this, &GroupHeader::toggle));
    append(button_);

    const auto click = Gtk::GestureClick::create();
    click->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);  // before the button
    click->signal_pressed().connect(sigc::mem_fun(*this, &GroupHeader::pressed));
    button_.add_controller(click);
}

void GroupHeader::addField() {
    field_.set_placeholder_text(phrase("Group name").c_str());
    field_.set_hexpand(true);
    field_.set_width_chars(1);
    setAccessibleLabel(field_, phrase("Group name"));
    editor_.add_css_class("group-line");
    editor_.add_css_class("group-editor");
    editor_.append(dots_[1]);
    editor_.append(field_);
    editor_.append(chevrons_[1]);
    editor_.set_hexpand(true);
    append(editor_);

    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &GroupHeader::keyPressed), false);
    field_.add_controller(keys);
    const auto focus = Gtk::EventControllerFocus::create();
    focus->signal_leave().connect(sigc::mem_fun(*this, &GroupHeader::fieldLeft));
    field_.add_controller(focus);
    g_signal_connect(gtk_editable_get_delegate(GTK_EDITABLE(field_.gobj())), "preedit-changed",
                     G_CALLBACK(+[](GtkText*, const char* preedit, gpointer self) {
                         static_cast<GroupHeader*>(self)->composing_ = *preedit != '\0';
                     }),
                     this);
}

void GroupHeader::addDot() {
    append(dot_);
    dot_.connectKeyboardFree([this] { takeFocus(); });
}

void GroupHeader::update(const TabGroup& group, std::size_t count) {
    const std::string name = oneLine(group.name, nameLimit);
    const std::string number = std::to_string(count);
    if (name_.get_text().raw() != name) name_.set_text(name);
    if (count_.get_text().raw() != number) count_.set_text(number);
    const std::string color = colorClass(group.color);
    for (auto& dot : dots_) {
        if (!dot.has_css_class(color)) dot.set_css_classes({"group-dot", color});
    }
    if (has_css_class("collapsed") != group.collapsed || label_.empty()) {
        setCssClass(*this, "collapsed", group.collapsed);
        setAccessibleExpanded(button_, !group.collapsed);
    }
    // Tabs in sight have dots of their own.
    dot_.watch(group.collapsed ? store_.tabs(group) : BrowserStore::TabList{});
    const std::string label = trn("{2} group, {1} tabs", "{2} group, {1} tabs", count, name);
    if (label == label_) return;
    label_ = label;
    button_.set_tooltip_text(name);
    setAccessibleLabel(button_, label_);
}

void GroupHeader::setTabStop(TabStop stop) {
    button_.set_focusable(stop == TabStop::yes);
    dot_.set_focusable(stop == TabStop::yes);
}

void GroupHeader::setNarrow(Narrow narrow) {
    narrow_ = narrow == Narrow::yes;
    if (narrow_ && isEditing()) fieldLeft();
    name_.set_visible(!narrow_);
    count_.set_visible(!narrow_);
    content_.set_halign(narrow_ ? Gtk::Align::CENTER : Gtk::Align::FILL);
}

std::vector<MenuEntry> GroupHeader::contextMenu() {
    const TabGroup* const group = store_.group(group_);
    if (!group) return {};
    if (narrow_) return groupMenu(store_, *group, {});  // no room for a field
    const sigc::slot<void()> begin = sigc::mem_fun(*this, &GroupHeader::rename);
    return groupMenu(store_, *group, begin);
}

void GroupHeader::toggle() { store_.toggleCollapsed(TabGroup{.id = group_, .name = {}}); }

void GroupHeader::pressed(int count, double, double) {
    if (count != 2) return;
    toggle();  // takes back what the first of the two clicks did
    rename();
}

void GroupHeader::rename() {
    if (narrow_) return;
    const auto name = editing_.begin();
    if (!name) return;
    field_.set_text(*name);
    showField(true);
    field_.grab_focus();  // selects all
}

bool GroupHeader::keyPressed(guint key, guint, Gdk::ModifierType) {
    if (composing_) return false;  // the input method answers first
    if (isReturnKey(key)) {
        editing_.confirm(field_.get_text().raw());
    } else if (key == GDK_KEY_Escape) {
        editing_.cancel();
    } else {
        return false;
    }
    showField(false);
    button_.set_focusable(true);
    takeFocus();
    return true;
}

void GroupHeader::fieldLeft() {
    const auto* const window = dynamic_cast<Gtk::Window*>(get_root());
    if (window && !window->is_active()) return;  // the person looks something up elsewhere
    editing_.leave(field_.get_text().raw());
    showField(false);
}

void GroupHeader::showField(bool editing) {
    button_.set_visible(!editing);
    editor_.set_visible(editing);
}

}  // namespace orvu
