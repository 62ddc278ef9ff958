#pragma once

#include "core/BrowserTab.h"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace orvu {

/// Lets `page` zoom its tab by the wheel with Control held, and go back and forward by the mouse's
/// side buttons, before the engine sees either. `tab` gives the tab, or nothing.
void addPageGestures(Gtk::Widget& page, std::function<std::shared_ptr<BrowserTab>()> tab);

}  // namespace orvu
