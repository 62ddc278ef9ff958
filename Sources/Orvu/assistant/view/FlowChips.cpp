#include "assistant/view/FlowChips.h"

#include "assistant/KestoPanel.h"
#include "assistant/view/KestoText.h"
#include "look/text/OneLine.h"

namespace orvu {
namespace {

constexpr int spacing = 6;
constexpr std::size_t titleLimit = 200;

}  // namespace

FlowChips::FlowChips() : Gtk::Box(Gtk::Orientation::VERTICAL, spacing) {
    auto* const heading = Gtk::make_managed<Gtk::Label>(std::string{KestoPanel::sourcesTitle});
    heading->add_css_class("kesto-heading");
    heading->add_css_class("sources");
    heading->set_xalign(0);
    append(*heading);
}

void FlowChips::setTexts(const std::vector<std::string>& texts) {
    if (texts == texts_) return;
    texts_ = texts;
    while (Gtk::Widget* const chip = get_first_child()->get_next_sibling()) remove(*chip);
    for (const std::string& text : texts) {
        auto* const chip = Gtk::make_managed<Gtk::Label>(oneLine(text, titleLimit));
        cutText(*chip);
        chip->add_css_class("kesto-source");
        chip->set_halign(Gtk::Align::START);
        append(*chip);
    }
}

}  // namespace orvu
