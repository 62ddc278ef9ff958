#include "search/answers/view/CitedText.h"

#include "look/Desk.h"

#include <pangomm/attrlist.h>

#include <array>
#include <cstdint>
#include <string>

namespace orvu {
namespace {

constexpr int citationSize = 10;  // points
constexpr int citationRise = 5;   // points

guint16 channel(std::uint8_t part) { return static_cast<guint16>(part * 257); }

void raise(Pango::AttrList& attributes, std::size_t begin, std::size_t end) {
    const Color& sky = Desk::sky;
    std::array<Pango::Attribute, 4> all{
        Pango::Attribute::create_attr_weight(Pango::Weight::BOLD),
        Pango::Attribute::create_attr_size_absolute(citationSize * PANGO_SCALE),
        Pango::Attribute::create_attr_rise(citationRise * PANGO_SCALE),
        Pango::Attribute::create_attr_foreground(channel(sky.red), channel(sky.green),
                                                 channel(sky.blue))};
    for (Pango::Attribute& each : all) {
        each.set_start_index(static_cast<guint>(begin));
        each.set_end_index(static_cast<guint>(end));
        attributes.insert(each);
    }
}

}  // namespace

void setCitedText(Gtk::Label& label, const std::vector<SearchAnswerCard::Run>& runs) {
    Pango::AttrList attributes;
    std::string text;
    for (const auto& run : runs) {
        const auto begin = text.size();
        text += run.text;
        if (run.isCitation) raise(attributes, begin, text.size());
    }
    label.set_text(text);
    label.set_attributes(attributes);
}

}  // namespace orvu
