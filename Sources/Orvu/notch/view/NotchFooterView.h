#pragma once

#include "notch/NotchCandidates.h"
#include "site/Favicons.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <functional>
#include <optional>

namespace orvu {

/// What stands under the notch's list: the same search elsewhere, and who suggests.
class NotchFooterView : public Gtk::Box {
public:
    using Perform = std::function<void(const NotchAction&)>;

    /// `favicons` must outlive the view.
    NotchFooterView(FaviconStore& favicons, Trace trace, Perform perform);

    /// Nothing hides it.
    void show(const std::optional<NotchFooter>& footer);

private:
    void makeChips();

    FaviconStore& favicons_;
    const Trace trace_;
    const Perform perform_;
    NotchFooter shown_;
    Gtk::Box chips_{Gtk::Orientation::HORIZONTAL, 6};
    Gtk::Label note_;
};

}  // namespace orvu
