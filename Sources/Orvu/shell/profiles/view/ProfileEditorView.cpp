#include "shell/profiles/view/ProfileEditorView.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Ellipsis.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"
#include "profiles/ProfileIcons.h"
#include "shell/profiles/view/ProfileColorRules.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <string>

namespace orvu {
namespace {

constexpr int columns = 11;
constexpr int cellSize = 34;
constexpr int symbolSize = 14;
constexpr int circleSize = 26;
constexpr int circleSpacing = 2;
constexpr int spacing = 6;
constexpr int searchWidth = 130;  // 150 with the padding and the border of its style
constexpr int gridHeight = 194;   ///< five rows; more scrolls
constexpr int longestTitle = 24;  ///< characters of the main button that are shown

Gtk::Label& makeHeading(std::string_view text, const char* style) {
    auto& label = *Gtk::make_managed<Gtk::Label>(std::string{text});
    label.add_css_class(style);
    label.set_xalign(0);
    return label;
}

void setUp(Gtk::FlowBox& box, int perLine, const char* style, const std::string& name) {
    box.add_css_class(style);
    box.set_min_children_per_line(static_cast<guint>(perLine));
    box.set_max_children_per_line(static_cast<guint>(perLine));
    box.set_row_spacing(spacing);
    box.set_column_spacing(spacing);
    box.set_homogeneous(true);
    box.set_halign(Gtk::Align::START);
    box.set_selection_mode(Gtk::SelectionMode::SINGLE);
    setAccessibleLabel(box, name);
}

/// How assistive technology calls a symbol: by what it is looked for by.
std::string spokenName(const ProfileIcons::Row& row) { return row.words; }

}  // namespace

ProfileEditorView::ProfileEditorView(ProfileEditor& editor)
    : editor_(editor), preview_(editor), fields_(Gtk::Orientation::VERTICAL) {
    add_css_class("profile-editor");
    preview_.set_valign(Gtk::Align::CENTER);
    append(preview_);
    fields_.add_css_class("profile-fields");
    fields_.append(makeHeading(editor.heading(), "sheet-heading"));
    addName();
    addColors();
    addSearch();
    addIcons();
    addButtons();
    append(fields_);
    editor_.connectChanged(sigc::mem_fun(*this, &ProfileEditorView::refresh));
    refresh();
}

ProfileEditorView::~ProfileEditorView() {
    notify_callbacks();
    for (const auto& [symbol, cell] : cells_) cell->unreference();
}

void ProfileEditorView::addName() {
    fields_.append(makeHeading(ProfileEditor::nameLabel, "sheet-label"));
    name_.add_css_class("sheet-field");
    name_.set_placeholder_text(std::string{ProfileEditor::namePrompt});
    setAccessibleLabel(name_, std::string{ProfileEditor::nameLabel});
    name_.set_text(editor_.name.get());
    name_.signal_changed().connect([this] { editor_.name.set(name_.get_text().raw()); });
    name_.signal_activate().connect([this] { editor_.save(); });
    fields_.append(name_);
}

void ProfileEditorView::addColors() {
    fields_.append(makeHeading(ProfileEditor::colorLabel, "sheet-label"));
    setUp(colors_, static_cast<int>(ProfileLook::all.size()), "profile-colors",
          std::string{ProfileEditor::colorLabel});
    colors_.set_column_spacing(circleSpacing);  // beside their rings
    for (const ProfileLook& look : ProfileLook::all) {
        auto& circle = *Gtk::make_managed<Gtk::Box>();
        circle.add_css_class("profile-ground");
        circle.add_css_class("profile-circle");
        circle.add_css_class(profileColorClass(look.color));
        circle.set_size_request(circleSize, circleSize);
        auto& child = *Gtk::make_managed<Gtk::FlowBoxChild>();
        child.add_css_class("profile-ring");
        child.add_css_class(profileColorClass(look.color));
        child.set_child(circle);
        child.set_tooltip_text(std::string{look.name});
        setAccessibleLabel(child, std::string{look.name});
        colors_.append(child);
        circles_.push_back(&child);
    }
    colors_.signal_selected_children_changed().connect([this] {
        const auto chosen = colors_.get_selected_children();
        if (!chosen.empty()) editor_.color.set(chosen.front()->get_index());
    });
    addKeys(colors_, name_, search_);
    fields_.append(colors_);
}

void ProfileEditorView::addSearch() {
    auto& line = *Gtk::make_managed<Gtk::Box>();
    count_.add_css_class("sheet-count");
    count_.set_xalign(0);
    count_.set_hexpand(true);
    line.append(count_);
    search_.add_css_class("sheet-search");
    search_.set_size_request(searchWidth, -1);
    search_.set_width_chars(1);
    search_.set_placeholder_text(std::string{ProfileEditor::searchPrompt});
    setAccessibleLabel(search_, std::string{ProfileEditor::searchPrompt});
    search_.signal_changed().connect([this] { editor_.search.set(search_.get_text().raw()); });
    search_.signal_activate().connect([this] { editor_.save(); });
    line.append(search_);
    fields_.append(line);
}

void ProfileEditorView::addIcons() {
    setUp(grid_, columns, "profile-icons", phrase("Icon"));
    grid_.set_valign(Gtk::Align::START);
    for (const ProfileIcons::Row& row : ProfileIcons::all) {
        auto& image = *Gtk::make_managed<Gtk::Image>();
        setSymbol(image, row.symbol, symbolSize);
        auto& cell = *Gtk::make_managed<Gtk::FlowBoxChild>();
        cell.add_css_class("profile-cell");
        cell.set_size_request(cellSize, cellSize);
        cell.set_child(image);
        setAccessibleLabel(cell, spokenName(row));
        cell.reference();  // those that a search hides are not in the grid
        cells_.emplace(row.symbol, &cell);
    }
    grid_.signal_selected_children_changed().connect([this] {
        const auto chosen = grid_.get_selected_children();
        if (chosen.empty()) return;
        editor_.icon.set(std::string{shown_.at(static_cast<std::size_t>(chosen[0]->get_index()))});
    });
    addKeys(grid_, search_, cancel_);
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_size_request(-1, gridHeight);
    scroller_.add_css_class("profile-icon-scroll");
    scroller_.set_child(grid_);
    nameScrollBars(scroller_);
    fields_.append(scroller_);
}

void ProfileEditorView::addButtons() {
    buttons_.add_css_class("sheet-buttons");
    buttons_.set_halign(Gtk::Align::END);
    cancel_.add_css_class("sheet-button");
    cancel_.signal_clicked().connect([this] { editor_.cancel(); });
    save_.add_css_class("sheet-button");
    save_.add_css_class("suggested");
    save_.signal_clicked().connect([this] { editor_.save(); });
    buttons_.append(cancel_);
    buttons_.append(save_);
    fields_.append(buttons_);
}

void ProfileEditorView::showIcons() {
    auto now = editor_.icons();
    if (now == shown_) return;
    shown_.clear();  // what is chosen goes out with the others, and is not unchosen by that
    while (Gtk::FlowBoxChild* const child = grid_.get_child_at_index(0)) grid_.remove(*child);
    shown_ = std::move(now);
    for (const auto symbol : shown_) grid_.append(*cells_.at(symbol));
}

void ProfileEditorView::showChosen() {
    const auto color = &editor_.look() - ProfileLook::all.data();
    Gtk::FlowBoxChild& circle = *circles_[static_cast<std::size_t>(color)];
    if (!circle.is_selected()) colors_.select_child(circle);
    const auto cell = cells_.find(editor_.icon.get());
    const bool isShown = cell != cells_.end() && cell->second->get_parent();
    if (isShown && !cell->second->is_selected()) grid_.select_child(*cell->second);
    for (const ProfileLook& look : ProfileLook::all) {
        setCssClass(grid_, profileColorClass(look.color), &look == &editor_.look());
    }
}

/// A place where one of many is chosen: arrows go about in it, Tab leaves it, and Return means the
/// main button, as in the fields.
void ProfileEditorView::addKeys(Gtk::FlowBox& choices, Gtk::Widget& before, Gtk::Widget& after) {
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this, &before, &after](guint key, guint, Gdk::ModifierType) {
            if (key == GDK_KEY_Tab) {
                after.grab_focus();
            } else if (key == GDK_KEY_ISO_Left_Tab) {
                before.grab_focus();
            } else if (isReturnKey(key)) {
                editor_.save();
            } else {
                return false;
            }
            return true;
        },
        false);
    choices.add_controller(keys);
}

void ProfileEditorView::refresh() {
    count_.set_text(editor_.iconsLabel());
    std::string title = editor_.saveTitle();
    save_.set_label(title);
    if (auto* const label = dynamic_cast<Gtk::Label*>(save_.get_child())) {
        limitLength(*label, longestTitle);
    }
    showIcons();
    showChosen();
    preview_.refresh();
}

}  // namespace orvu
