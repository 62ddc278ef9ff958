#pragma once

#include "shell/siteinfo/SitePanel.h"
#include "look/view/FrameRefresh.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>
#include <gtkmm/togglebutton.h>

#include <array>

namespace orvu {

/// The panel below the badge of the notch: what is known of the site, what it may do, and a button
/// that clears its data.
class SiteInfoPanel : public Gtk::Popover {
public:
    /// `panel` must outlive the view.
    explicit SiteInfoPanel(SitePanel& panel);
    ~SiteInfoPanel() override { notify_callbacks(); }

    /// Draws what the panel says now.
    void refresh();

private:
    /// One kind of capture, with a choice of three.
    struct Permission {
        Gtk::Box row;
        Gtk::Image symbol;
        Gtk::Label name;
        Gtk::Box picker;
        std::array<Gtk::ToggleButton, SitePermissions::allChoices.size()> choices;
    };

    void addSecurity();
    void addTrackers();
    void addPermission(CaptureKind kind);
    void addRefusals();
    void addClear();
    void choose(CaptureKind kind, SitePermissions::Choice choice, const Gtk::ToggleButton& button);
    [[nodiscard]] Permission& permission(CaptureKind kind);

    SitePanel& panel_;
    Gtk::Box content_{Gtk::Orientation::VERTICAL};
    Gtk::Label site_;
    Gtk::Box security_;
    Gtk::Image securitySymbol_;
    Gtk::Label securityText_;
    std::array<Permission, SitePermissions::allKinds.size()> permissions_;
    std::array<Gtk::Box, RefusedPermissions::all.size()> refusals_;
    Gtk::Button clear_;
    FrameRefresh refresh_;
};

}  // namespace orvu
