#pragma once

#include "core/BrowserStore.h"
#include "shell/column/GroupNameEditing.h"
#include "shell/column/view/ColumnLine.h"
#include "shell/siteinfo/view/CaptureDot.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <array>
#include <string>

namespace orvu {

/// The header of a group in the list of tabs: a click collapses or expands the group, a double
/// click edits its name. While it is collapsed, a dot speaks for those of its tabs that look or
/// listen.
class GroupHeader : public Gtk::Box, public ColumnLine {
public:
    /// `store` must outlive the header.
    GroupHeader(BrowserStore& store, const Uuid& group);
    ~GroupHeader() override;

    /// Shows the group as it is now, with the number of its tabs.
    void update(const TabGroup& group, std::size_t count);

    [[nodiscard]] Gtk::Widget& widget() override { return *this; }
    void setTabStop(TabStop stop) override;
    void takeFocus() override { button_.grab_focus(); }
    [[nodiscard]] bool isEditing() const override { return editing_.isEditing(); }
    void setNarrow(Narrow narrow) override;
    [[nodiscard]] std::vector<MenuEntry> contextMenu() override;
    void rename() override;

private:
    void addButton();
    void addField();
    void addDot();
    void toggle();
    void pressed(int count, double x, double y);
    bool keyPressed(guint key, guint code, Gdk::ModifierType modifiers);
    void fieldLeft();
    void showField(bool editing);

    BrowserStore& store_;
    const Uuid group_;
    GroupNameEditing editing_;
    bool narrow_ = false;
    bool composing_ = false;  ///< an input method is at work in the field
    std::string label_;

    Gtk::Button button_;
    Gtk::Box content_;
    Gtk::Label name_;
    Gtk::Label count_;
    CaptureDot dot_;
    Gtk::Box editor_;
    Gtk::Entry field_;
    // One of each beside the name, and one beside the field.
    std::array<Gtk::Box, 2> dots_;
    std::array<Gtk::Image, 2> chevrons_;
};

}  // namespace orvu
