#include "notch/view/NotchChoice.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"

namespace orvu {

NotchChoice::NotchChoice(const std::string& key) {
    add_css_class("notch-choice");
    set_focus_on_click(false);
    iconPlace_.add_css_class("notch-icon");
    iconPlace_.set_valign(Gtk::Align::CENTER);
    iconPlace_.set_hexpand(false);  // the icon in its middle must not widen it
    parts_.append(iconPlace_);
    title_.add_css_class("notch-choice-title");
    subtitle_.add_css_class("notch-choice-subtitle");
    for (auto* const label : {&title_, &subtitle_}) {
        label->set_ellipsize(Pango::EllipsizeMode::END);
        label->set_xalign(0);
        texts_.append(*label);
    }
    texts_.set_hexpand(true);
    texts_.set_valign(Gtk::Align::CENTER);
    parts_.append(texts_);
    key_.add_css_class("notch-key");
    key_.set_text(key);
    parts_.append(key_);
    set_child(parts_);
}

void NotchChoice::show(const std::string& title, const std::string& subtitle) {
    if (title_.get_text().raw() != title) {
        title_.set_text(title);
        setAccessibleLabel(*this, title);
    }
    if (subtitle_.get_text().raw() != subtitle) {
        subtitle_.set_text(subtitle);
        setAccessibleDescription(*this, subtitle);
    }
}

void NotchChoice::setHighlighted(bool highlighted) { setCssClass(*this, "selected", highlighted); }

}  // namespace orvu
