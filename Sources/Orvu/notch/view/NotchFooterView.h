#pragma once

#include "notch/candidates/NotchCandidates.h"
#include "site/icons/SiteIcons.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <functional>
#include <optional>

namespace orvu {

/// What stands under the notch's list: the same search elsewhere, and who suggests.
class NotchFooterView : public Gtk::Box {
public:
    using Chosen = std::function<void(const NotchFooter::Chip&)>;

    NotchFooterView(SiteIcons icons, Chosen chosen);

    /// Nothing hides it.
    void show(const std::optional<NotchFooter>& footer);

private:
    void makeChips();

    const SiteIcons icons_;
    const Chosen chosen_;
    NotchFooter shown_;
    Gtk::Box chips_{Gtk::Orientation::HORIZONTAL, 6};
    Gtk::Label note_;
};

}  // namespace orvu
