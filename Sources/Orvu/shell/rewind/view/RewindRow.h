#pragma once

#include "core/BrowserStore.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>
#include <string>

namespace orvu {

/// One of the latest visits in the time line.
class RewindRow : public Gtk::Button {
public:
    struct Actions {
        std::function<void()> enter;  ///< the pointer or the keyboard came
        std::function<void()> leave;
        std::function<void()> choose;
    };

    RewindRow(const BrowserStore& store, const Visit& visit, const std::string& time,
              const Actions& actions);

private:
    static constexpr int iconSize = 14;

    Gtk::Box line_;
    SiteIcon icon_;
    Gtk::Label title_;
    Gtk::Label time_;
};

}  // namespace orvu
