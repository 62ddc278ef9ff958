#include "shell/siteinfo/view/SiteInfoPanel.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"

namespace orvu {
namespace {

constexpr int width = 300;
constexpr int pickerWidth = 180;
constexpr int symbolSize = 13;

/// A label that begins at the left and stays in one line.
void setUp(Gtk::Label& label, const char* style) {
    label.add_css_class(style);
    label.set_xalign(0);
    label.set_ellipsize(Pango::EllipsizeMode::END);
}

Gtk::Label& makeLabel(std::string_view text, const char* style) {
    auto& label = *Gtk::make_managed<Gtk::Label>(std::string{text});
    setUp(label, style);
    label.set_ellipsize(Pango::EllipsizeMode::NONE);
    label.set_wrap(true);
    return label;
}

}  // namespace

SiteInfoPanel::SiteInfoPanel(SitePanel& panel)
    : panel_(panel), refresh_(*this, [this] { refresh(); }) {
    add_css_class("site-panel");
    set_has_arrow(false);
    set_position(Gtk::PositionType::BOTTOM);
    set_halign(Gtk::Align::START);
    content_.add_css_class("site-panel-content");
    content_.set_size_request(width, -1);
    setUp(site_, "site-panel-name");
    site_.set_ellipsize(Pango::EllipsizeMode::START);  // the end tells whose it is
    site_.set_max_width_chars(1);                      // as wide as the panel, not as the text
    content_.append(site_);
    addSecurity();
    addTrackers();
    content_.append(makeLabel(SiteInfo::permissions, "site-heading"));
    for (const auto kind : SitePermissions::allKinds) addPermission(kind);
    addRefusals();
    addClear();
    set_child(content_);
    panel_.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
}

void SiteInfoPanel::addSecurity() {
    security_.add_css_class("site-row");
    security_.add_css_class("site-security");
    security_.append(securitySymbol_);
    setUp(securityText_, "site-text");
    security_.append(securityText_);
    content_.append(security_);
}

void SiteInfoPanel::addTrackers() {
    auto& row = *Gtk::make_managed<Gtk::Box>();
    row.add_css_class("site-row");
    auto& symbol = *Gtk::make_managed<Gtk::Image>();
    symbol.add_css_class("site-shield");
    symbol.set_valign(Gtk::Align::START);
    setSymbol(symbol, SiteInfo::trackersSymbol, symbolSize);
    row.append(symbol);
    auto& texts = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    texts.append(makeLabel(SiteInfo::trackers, "site-text"));
    texts.append(makeLabel(SiteInfo::trackersDetail, "site-quiet"));
    row.append(texts);
    content_.append(row);
}

void SiteInfoPanel::addPermission(CaptureKind kind) {
    auto& [row, symbol, name, picker, choices] = permission(kind);
    const std::string title{SiteInfo::title(kind)};
    row.add_css_class("site-row");
    setSymbol(symbol, SiteInfo::symbolOf(kind), symbolSize);
    row.append(symbol);
    setUp(name, "site-text");
    name.set_text(title);
    name.set_hexpand(true);
    row.append(name);
    picker.add_css_class("segments");
    picker.set_homogeneous(true);
    picker.set_size_request(pickerWidth, -1);
    picker.property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(picker, title);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const auto choice = SitePermissions::allChoices[i];
        auto& button = choices[i];
        const std::string choiceTitle{SiteInfo::title(choice)};
        button.set_label(choiceTitle);
        setAccessibleLabel(button, tr("{1}: {2}", title, choiceTitle));
        if (i > 0) button.set_group(choices[0]);
        button.signal_toggled().connect(
            [this, kind, choice, &button] { choose(kind, choice, button); });
        picker.append(button);
    }
    row.append(picker);
    content_.append(row);
}

/// One line for each thing that Orvu never allows. Those that the page asked for are shown.
void SiteInfoPanel::addRefusals() {
    for (const auto permission : RefusedPermissions::all) {
        Gtk::Box& row = refusals_[static_cast<std::size_t>(permission)];
        row.add_css_class("site-row");
        auto& symbol = *Gtk::make_managed<Gtk::Image>();
        symbol.add_css_class("site-refused");
        setSymbol(symbol, SiteInfo::refusedSymbol, symbolSize);
        row.append(symbol);
        auto& name = makeLabel(SiteInfo::title(permission), "site-text");
        name.set_hexpand(true);
        row.append(name);
        row.append(makeLabel(SiteInfo::refused, "site-quiet"));
        content_.append(row);
    }
}

void SiteInfoPanel::addClear() {
    clear_.add_css_class("site-clear");
    clear_.signal_clicked().connect([this] { panel_.clearSiteData(); });
    content_.append(clear_);
}

SiteInfoPanel::Permission& SiteInfoPanel::permission(CaptureKind kind) {
    return permissions_[static_cast<std::size_t>(kind)];
}

void SiteInfoPanel::choose(CaptureKind kind, SitePermissions::Choice choice,
                           const Gtk::ToggleButton& button) {
    // Drawing what is chosen presses the buttons too.
    if (button.get_active() && panel_.choice(kind) != choice) panel_.choose(choice, kind);
}

void SiteInfoPanel::refresh() {
    const std::string site = panel_.site();
    site_.set_text(displayHost(site));
    site_.set_tooltip_text(displayHost(site));
    site_.set_visible(!site.empty());
    const auto info = SiteInfo::of(panel_.security());
    setSymbol(securitySymbol_, info.symbol, symbolSize);
    securityText_.set_text(std::string{info.security});
    setCssClass(security_, "secure", panel_.security() == SiteSecurity::secure);
    for (const auto kind : SitePermissions::allKinds) {
        const auto place = static_cast<std::size_t>(panel_.choice(kind));
        permission(kind).choices[place].set_active(true);
    }
    for (const auto permission : RefusedPermissions::all) {
        refusals_[static_cast<std::size_t>(permission)].set_visible(panel_.isRefused(permission));
    }
    clear_.set_label(std::string{panel_.isCleared() ? SiteInfo::cleared : SiteInfo::clear});
    clear_.set_sensitive(panel_.canClear());
}

}  // namespace orvu
