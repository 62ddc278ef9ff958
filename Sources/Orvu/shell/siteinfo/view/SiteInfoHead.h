#pragma once

#include "shell/siteinfo/view/CaptureDot.h"
#include "shell/siteinfo/view/SiteInfoButton.h"

#include <gtkmm/overlay.h>

namespace orvu {

/// What stands at the head of the notch: the badge of the site and, while the page in front looks
/// or listens, a dot on it.
class SiteInfoHead : public Gtk::Overlay {
public:
    /// `window` must outlive the head.
    explicit SiteInfoHead(BrowserView& window);

private:
    void follow();

    BrowserView& window_;
    SiteInfoButton badge_;
    CaptureDot dot_;
};

}  // namespace orvu
