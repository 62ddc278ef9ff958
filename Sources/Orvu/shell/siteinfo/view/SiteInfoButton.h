#pragma once

#include "core/BrowserStore.h"
#include "shell/siteinfo/SitePanel.h"
#include "shell/siteinfo/view/SiteInfoPanel.h"

#include <gtkmm/button.h>
#include <gtkmm/image.h>

#include <functional>
#include <optional>

namespace orvu {

/// The badge at the head of the notch: whether the connection is secure. It opens the panel of the
/// site, or, where there is no site, the notch.
class SiteInfoButton : public Gtk::Button {
public:
    /// `store` and `loop` must outlive the view. `openNotch` is called at a click on the badge of
    /// an empty tab.
    SiteInfoButton(BrowserStore& store, MainLoop& loop, std::function<void()> openNotch);
    ~SiteInfoButton() override;

    /// Follows the tab in front.
    void refresh();
    /// Closes the panel, if it is open.
    void close() { view_.popdown(); }

protected:
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void clicked();
    void open();
    void closed();

    BrowserStore& store_;
    const std::function<void()> openNotch_;
    SitePanel panel_;
    Gtk::Image symbol_;
    SiteInfoPanel view_;
    std::optional<SiteSecurity> shown_;
};

}  // namespace orvu
