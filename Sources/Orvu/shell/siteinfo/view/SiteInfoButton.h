#pragma once

#include "core/ActiveTabWatch.h"
#include "look/view/FrameRefresh.h"
#include "shell/BrowserView.h"
#include "shell/siteinfo/SitePanel.h"
#include "shell/siteinfo/view/SiteInfoPanel.h"

#include <gtkmm/button.h>
#include <gtkmm/image.h>

#include <optional>

namespace orvu {

/// The badge at the head of the notch: whether the connection is secure. It opens the panel of the
/// site, or, where there is no site, the notch.
class SiteInfoButton : public Gtk::Button {
public:
    /// `window` must outlive the button.
    explicit SiteInfoButton(BrowserView& window);
    ~SiteInfoButton() override;

protected:
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void refresh();
    void notchChanged();
    void clicked();
    void open();
    void closed();

    BrowserView& window_;
    SitePanel panel_;
    Gtk::Image symbol_;
    SiteInfoPanel view_;
    std::optional<SiteSecurity> shown_;
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
};

}  // namespace orvu
