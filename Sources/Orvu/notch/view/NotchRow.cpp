#include "notch/view/NotchRow.h"

#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"

#include <cstdint>

namespace orvu {
namespace {

constexpr int siteIconSize = 20;
constexpr int signSize = 12;
constexpr std::size_t titleLimit = 300;
constexpr double typedOpacity = 0.62;

std::string rowName(const NotchEntry& entry) {
    std::string name = oneLine(entry.typed + entry.rest, titleLimit);
    if (!entry.detail.empty()) name += ", " + entry.detail;
    if (!entry.hint.empty()) name += ", " + entry.hint;
    return name;
}

}  // namespace

NotchRow::NotchRow(SiteIcons icons, const std::function<void()>& chosen)
    : Gtk::Box(Gtk::Orientation::VERTICAL), site_(icons, siteIconSize) {
    heading_.add_css_class("notch-heading");
    heading_.set_xalign(0);
    append(heading_);
    button_.add_css_class("notch-row");
    button_.add_css_class("hover-row");
    button_.set_focus_on_click(false);
    button_.property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    button_.signal_clicked().connect(chosen);
    addParts();
    button_.set_child(parts_);
    append(button_);
}

void NotchRow::addParts() {
    iconPlace_.add_css_class("notch-icon");
    iconPlace_.set_valign(Gtk::Align::CENTER);
    iconPlace_.set_hexpand(false);  // the icon in its middle must not widen it
    for (Gtk::Widget* const icon : std::initializer_list<Gtk::Widget*>{&site_, &sign_}) {
        icon->set_hexpand(true);
        icon->set_halign(Gtk::Align::CENTER);
        icon->set_valign(Gtk::Align::CENTER);
        icon->set_visible(false);
    }
    iconPlace_.append(site_);
    iconPlace_.append(sign_);
    parts_.append(iconPlace_);
    for (auto* const label : {&title_, &detail_}) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_xalign(0);
        parts_.append(*label);
    }
    title_.add_css_class("notch-row-title");
    detail_.add_css_class("notch-row-detail");
    hint_.add_css_class("notch-row-hint");
    hint_.set_hexpand(true);
    hint_.set_halign(Gtk::Align::END);
    parts_.append(hint_);
}

void NotchRow::show(const NotchEntry& entry, Heading heading) {
    heading_.set_visible(heading == Heading::yes);
    if (entry == shown_) return;
    shown_ = entry;
    name_ = rowName(entry);
    heading_.set_text(entry.section);
    showIcon(entry.icon);
    showTitle(entry);
    detail_.set_text(entry.detail);
    detail_.set_visible(!entry.detail.empty());
    hint_.set_text(entry.hint);
    setAccessibleLabel(button_, name_);
}

void NotchRow::showIcon(const NotchEntry::Icon& icon) {
    const auto* const site = std::get_if<NotchEntry::SiteIcon>(&icon);
    site_.set_visible(site != nullptr);
    sign_.set_visible(site == nullptr);
    if (site) {
        site_.setHost(site->host);
        return;
    }
    const bool recent = std::get<NotchEntry::Sign>(icon) == NotchEntry::Sign::recent;
    setSymbol(sign_, recent ? "clock.arrow.circlepath" : "magnifyingglass", signSize);
    setCssClass(sign_, "notch-recent", recent);
}

void NotchRow::showTitle(const NotchEntry& entry) {
    const std::string title = oneLine(entry.typed + entry.rest, titleLimit);
    const std::string typed = oneLine(entry.typed, titleLimit);
    title_.set_text(title);
    auto attributes = Pango::AttrList{};
    if (!typed.empty() && title.starts_with(typed)) {
        const auto bytes = static_cast<guint>(typed.size());
        auto quiet = Pango::Attribute::create_attr_foreground_alpha(
            static_cast<std::uint16_t>(typedOpacity * UINT16_MAX));
        quiet.set_start_index(0);
        quiet.set_end_index(bytes);
        attributes.insert(quiet);
        auto strong = Pango::Attribute::create_attr_weight(Pango::Weight::SEMIBOLD);
        strong.set_start_index(bytes);
        attributes.insert(strong);
    }
    title_.set_attributes(attributes);
}

void NotchRow::setSelected(bool selected) {
    if (button_.has_css_class("selected") == selected) return;
    setCssClass(button_, "selected", selected);
    setAccessibleSelected(button_, selected);
}

}  // namespace orvu
