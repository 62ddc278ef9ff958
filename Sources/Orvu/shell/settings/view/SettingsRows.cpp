#include "shell/settings/view/SettingsRows.h"

#include "look/view/Accessible.h"
#include "profiles/Preferences.h"
#include "update/view/UpdateStatusRow.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/label.h>
#include <gtkmm/switch.h>
#include <gtkmm/togglebutton.h>

#include <vector>

namespace orvu {
namespace {

Gtk::Label& makeLabel(const std::string& text) {
    auto& label = *Gtk::make_managed<Gtk::Label>(text);
    label.set_xalign(0);
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    return label;
}

Gtk::Box& makeLine() {
    auto& line = *Gtk::make_managed<Gtk::Box>();
    line.add_css_class("settings-row");
    return line;
}

/// A line that begins with its label.
Gtk::Box& makeLine(std::string_view text) {
    auto& line = makeLine();
    auto& label = makeLabel(std::string{text});
    label.set_hexpand(true);
    line.append(label);
    return line;
}

Gtk::Button& makeButton(std::string_view title) {
    auto& button = *Gtk::make_managed<Gtk::Button>(std::string{title});
    button.add_css_class("settings-button");
    button.set_valign(Gtk::Align::CENTER);
    return button;
}

struct RowMaker {
    Gtk::Widget& operator()(const SettingsView::Switch& row) const {
        auto& line = makeLine(row.label);
        auto& control = *Gtk::make_managed<Gtk::Switch>();
        control.set_valign(Gtk::Align::CENTER);
        setAccessibleLabel(control, std::string{row.label});
        auto* const setting = row.setting;
        control.set_active(setting->get());
        control.property_active().signal_changed().connect([&control, setting] {
            if (control.get_active() != setting->get()) setting->set(control.get_active());
        });
        setting->connectChanged(sigc::track_object(
            [&control, setting] { control.set_active(setting->get()); }, control));
        line.append(control);
        line.set_sensitive(row.isEnabled);
        if (!row.isEnabled) return line;
        line.add_css_class("switchable");
        const auto click = Gtk::GestureClick::create();
        click->signal_released().connect(
            [&control](int, double, double) { control.set_active(!control.get_active()); });
        line.add_controller(click);
        return line;
    }

    Gtk::Widget& operator()(const SettingsView::EnginePicker& row) const {
        auto& line = makeLine(row.label);
        auto& picker = *Gtk::make_managed<Gtk::Box>();
        picker.add_css_class("segments");
        picker.set_valign(Gtk::Align::CENTER);
        picker.property_accessible_role() = Gtk::Accessible::Role::GROUP;
        setAccessibleLabel(picker, std::string{row.label});
        std::vector<Gtk::ToggleButton*> choices;
        for (const auto& engine : Prefs::engines) {
            auto& choice = *Gtk::make_managed<Gtk::ToggleButton>(std::string{engine.shownName});
            setAccessibleLabel(choice,
                               std::string{row.label} + ": " + std::string{engine.shownName});
            if (!choices.empty()) choice.set_group(*choices.front());
            choice.signal_toggled().connect(
                [&choice, setting = row.setting, value = engine.engine] {
                    if (choice.get_active() && setting->get() != value) setting->set(value);
                });
            picker.append(choice);
            choices.push_back(&choice);
        }
        const auto show = [choices, setting = row.setting] {
            for (std::size_t i = 0; i < choices.size(); ++i) {
                if (Prefs::engines[i].engine == setting->get()) choices[i]->set_active(true);
            }
        };
        show();
        row.setting->connectChanged(sigc::track_object(show, picker));
        line.append(picker);
        return line;
    }

    Gtk::Widget& operator()(const SettingsView::Button& row) const {
        auto& line = row.label.empty() ? makeLine() : makeLine(row.label);
        auto& button = makeButton(row.title);
        button.signal_clicked().connect(row.press);
        line.append(button);
        return line;
    }

    Gtk::Widget& operator()(const SettingsView::Status& row) const {
        return *Gtk::make_managed<UpdateStatusRow>(*row.status);
    }

    Gtk::Widget& operator()(const SettingsView::Caption& row) const {
        auto& label = makeLabel(row.text);
        label.add_css_class("settings-caption");
        return label;
    }

    Gtk::Widget& operator()(const SettingsView::Skill& row) const {
        auto& line = makeLine();
        auto& texts = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
        texts.set_hexpand(true);
        auto& name = makeLabel(row.name);
        name.add_css_class("settings-skill");
        auto& instruction = makeLabel(row.instruction);
        instruction.add_css_class("settings-skill-text");
        for (auto* const label : {&name, &instruction}) {
            label->set_ellipsize(Pango::EllipsizeMode::END);
            label->set_lines(2);
            texts.append(*label);
        }
        line.append(texts);
        auto& button = makeButton(SettingsView::Skill::removeTitle);
        setAccessibleLabel(button, std::string{SettingsView::Skill::removeTitle} + " " + row.name);
        button.signal_clicked().connect(row.remove);
        line.append(button);
        return line;
    }
};

struct KeyMaker {
    std::string operator()(const SettingsView::Switch& row) const {
        return "switch " + std::string{row.label};
    }
    std::string operator()(const SettingsView::EnginePicker& row) const {
        return "picker " + std::string{row.label};
    }
    std::string operator()(const SettingsView::Button& row) const {
        return "button " + std::string{row.title};
    }
    std::string operator()(const SettingsView::Status&) const { return "status"; }
    std::string operator()(const SettingsView::Caption& row) const { return "caption " + row.text; }
    std::string operator()(const SettingsView::Skill& row) const {
        return "skill " + row.name + "\n" + row.instruction;
    }
};

}  // namespace

Gtk::Widget& makeSettingsRow(const SettingsView::Row& row) { return std::visit(RowMaker{}, row); }

std::string settingsRowKey(const SettingsView::Row& row) { return std::visit(KeyMaker{}, row); }

}  // namespace orvu
