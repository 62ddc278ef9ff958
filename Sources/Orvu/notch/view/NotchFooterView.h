#pragma once

#include "notch/candidates/NotchCandidates.h"
#include "site/Favicons.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <functional>
#include <optional>

namespace orvu {

/// What stands under the notch's list: the same search elsewhere, and who suggests.
class NotchFooterView : public Gtk::Box {
public:
    using Chosen = std::function<void(const NotchFooter::Chip&)>;

    /// `favicons` must outlive the view.
    NotchFooterView(FaviconStore& favicons, Persistence persistence, Chosen chosen);

    /// Nothing hides it.
    void show(const std::optional<NotchFooter>& footer);

private:
    void makeChips();

    FaviconStore& favicons_;
    const Persistence persistence_;
    const Chosen chosen_;
    NotchFooter shown_;
    Gtk::Box chips_{Gtk::Orientation::HORIZONTAL, 6};
    Gtk::Label note_;
};

}  // namespace orvu
