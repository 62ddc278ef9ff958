#pragma once

#include "profiles/settings/SettingsView.h"

#include <gtkmm/box.h>

#include <map>
#include <string>

namespace orvu {

/// The sections of the settings, one under the other. Rows that stay keep their widgets, and with
/// them the keyboard.
class SettingsForm : public Gtk::Box {
public:
    /// `settings` must outlive the form.
    explicit SettingsForm(SettingsView& settings);
    ~SettingsForm() override { notify_callbacks(); }

private:
    struct Card {
        Gtk::Box* box = nullptr;
        std::map<std::string, Gtk::Widget*> rows;
    };

    void refresh();
    void show(const SettingsView::Section& section);
    [[nodiscard]] Card& card(const SettingsView::Section& section);

    SettingsView& settings_;
    std::map<std::string_view, Card> cards_;
};

}  // namespace orvu
