#include "shell/siteinfo/view/SiteInfoButton.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "look/view/Tooltips.h"

namespace orvu {
namespace {

constexpr int symbolSize = 11;

}  // namespace

SiteInfoButton::SiteInfoButton(BrowserView& window)
    : window_(window),
      panel_(window.store().permissions(), window.store().persistence()),
      view_(panel_),
      refresh_(*this, [this] { refresh(); }),
      watch_(window.store(), [this] { refresh_.mark(); }) {
    add_css_class("site-badge");
    set_valign(Gtk::Align::CENTER);
    set_hexpand(false);  // or the panel's rows would widen the badge
    set_focus_on_click(false);
    set_child(symbol_);
    signal_clicked().connect(sigc::mem_fun(*this, &SiteInfoButton::clicked));
    view_.set_parent(*this);
    hideTooltipWhileOpen(*this, view_);
    view_.signal_closed().connect(sigc::mem_fun(*this, &SiteInfoButton::closed));
    window_.commandOpen.connectChanged(sigc::mem_fun(*this, &SiteInfoButton::notchChanged));
    refresh();
}

SiteInfoButton::~SiteInfoButton() {
    notify_callbacks();
    view_.unparent();
}

void SiteInfoButton::refresh() {
    const bool otherTab = panel_.setTab(window_.store().active());
    const SiteSecurity security = panel_.security();
    if (otherTab || security == SiteSecurity::none) view_.popdown();
    if (view_.get_visible()) view_.refresh();
    if (shown_ == security) return;
    shown_ = security;
    const SiteBadge badge = SiteBadge::of(security);
    setSymbol(symbol_, badge.symbol, symbolSize);
    set_tooltip_text(std::string{badge.label});
    setAccessibleLabel(*this, std::string{badge.label});
    setCssClass(*this, "secure", security == SiteSecurity::secure);
    setCssClass(*this, "insecure", security == SiteSecurity::insecure);
}

void SiteInfoButton::size_allocate_vfunc(int width, int height, int baseline) {
    Gtk::Button::size_allocate_vfunc(width, height, baseline);
    view_.present();
}

void SiteInfoButton::notchChanged() {
    if (window_.commandOpen.get()) view_.popdown();
}

void SiteInfoButton::clicked() {
    refresh();  // what is pressed is the tab as it is now
    if (panel_.security() == SiteSecurity::none) return window_.editAddress("");
    open();
}

void SiteInfoButton::open() {
    view_.refresh();
    setAccessibleExpanded(*this, true);
    view_.popup();
}

void SiteInfoButton::closed() { setAccessibleExpanded(*this, false); }

}  // namespace orvu
