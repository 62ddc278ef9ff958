#pragma once

#include "profiles/settings/SettingsView.h"

#include <gtkmm/widget.h>

namespace orvu {

/// A widget for a row of the settings, made managed. What it changes is written at once, and it
/// follows what others change. The settings must outlive it.
[[nodiscard]] Gtk::Widget& makeSettingsRow(const SettingsView::Row& row);

/// What tells a row of a section from the others that ever stand there.
[[nodiscard]] std::string settingsRowKey(const SettingsView::Row& row);

}  // namespace orvu
