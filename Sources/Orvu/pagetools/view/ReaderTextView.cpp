#include "pagetools/view/ReaderTextView.h"

#include "look/Desk.h"
#include "look/drawing/view/Drawing.h"

#include <algorithm>
#include <cmath>

namespace orvu {
namespace {

using Weight = ReaderStyle::Weight;

/// How much text comes in at once: more would be seen as a jerk.
constexpr std::size_t sliceBytes = 16'384;

int points(double length) { return static_cast<int>(std::lround(length)); }

Pango::FontDescription fontOf(const ReaderStyle& style) {
    Pango::FontDescription font;
    if (style.isMonospaced) font.set_family("monospace");
    font.set_absolute_size(style.fontSize * Pango::SCALE);
    font.set_weight(style.weight == Weight::semibold ? Pango::Weight::SEMIBOLD
                    : style.weight == Weight::medium ? Pango::Weight::MEDIUM
                                                     : Pango::Weight::NORMAL);
    font.set_style(style.isItalic ? Pango::Style::ITALIC : Pango::Style::NORMAL);
    return font;
}

void fill(GtkSnapshot* snapshot, Color color, double x, double y, double width, double height) {
    const auto paint = rgba({color});
    const graphene_rect_t bounds{{static_cast<float>(x), static_cast<float>(y)},
                                 {static_cast<float>(width), static_cast<float>(height)}};
    gtk_snapshot_append_color(snapshot, paint.gobj(), &bounds);
}

}  // namespace

ReaderTextView::ReaderTextView(std::vector<ReaderPiece> pieces)
    : Glib::ObjectBase("OrvuReaderTextView"),
      Glib::ExtraClassInit(&ReaderTextView::initClass),
      pieces_(std::move(pieces)),
      bullet_(create_pango_layout("•")) {
    add_css_class("reader-text");
    set_editable(false);
    set_cursor_visible(false);
    set_accepts_tab(false);
    set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
    set_top_margin(ReaderColumn::endPadding);
    set_bottom_margin(ReaderColumn::endPadding);
    // The bullet has none of the text's own spacing of letters.
    Pango::AttrList plain;
    bullet_->set_attributes(plain);
    addTags();
    addSome();
}

ReaderTextView::~ReaderTextView() {
    if (tick_ != 0) remove_tick_callback(tick_);
}

void ReaderTextView::initClass(void* viewClass, void*) {
    GTK_TEXT_VIEW_CLASS(viewClass)->snapshot_layer = &ReaderTextView::snapshotLayer;
}

void ReaderTextView::snapshotLayer(GtkTextView* view, GtkTextViewLayer layer,
                                   GtkSnapshot* snapshot) {
    if (layer != GTK_TEXT_VIEW_LAYER_BELOW_TEXT) return;
    const auto* const self = dynamic_cast<ReaderTextView*>(Glib::wrap(view));
    if (self) self->drawMarks(snapshot);
}

ReaderTextView::RoleTags& ReaderTextView::tags(ReaderRole role) {
    return tags_.at(static_cast<std::size_t>(role));
}

const ReaderTextView::RoleTags& ReaderTextView::tags(ReaderRole role) const {
    return tags_.at(static_cast<std::size_t>(role));
}

void ReaderTextView::addTags() {
    for (RoleTags& each : tags_) {
        each.text = get_buffer()->create_tag();
        each.firstLine = get_buffer()->create_tag();
        each.rightward = get_buffer()->create_tag();
        each.leftward = get_buffer()->create_tag();
        each.rightward->property_accumulative_margin() = true;
        each.leftward->property_accumulative_margin() = true;
    }
}

void ReaderTextView::setLook(double size, ReaderTheme theme) {
    muted_ = facts(theme).muted;
    styleTags(size);
    queue_draw();
}

void ReaderTextView::styleTags(double size) {
    bullet_->set_font_description(fontOf(ReaderStyle::of(ReaderRole::item, size)));
    const int bulletRoom =
        bullet_->get_pixel_logical_extents().get_width() + ReaderColumn::bulletSpacing;
    for (std::size_t i = 0; i < roleCount; ++i) {
        const auto role = static_cast<ReaderRole>(i);
        const auto style = ReaderStyle::of(role, size);
        const RoleTags& each = tags_.at(i);
        each.text->property_font_desc() = fontOf(style);
        // Tags can't bring letters closer together: the style sheet does so for the whole text.
        if (style.letterSpacing >= 0) {
            each.text->property_letter_spacing() = points(style.letterSpacing * Pango::SCALE);
        }
        each.text->property_pixels_inside_wrap() = points(style.lineSpacing);
        each.text->property_pixels_above_lines() = points(style.lineSpacing);
        if (style.isMuted) each.text->property_foreground_rgba() = rgba({muted_});
        each.firstLine->property_pixels_above_lines() = points(style.above);
        const int indent = role == ReaderRole::item ? bulletRoom : points(style.indent);
        each.rightward->property_left_margin() = indent;
        each.leftward->property_right_margin() = indent;
    }
}

bool ReaderTextView::find(const std::string& text, FindConfiguration how) {
    const auto flags = Gtk::TextSearchFlags::CASE_INSENSITIVE | Gtk::TextSearchFlags::TEXT_ONLY;
    const auto buffer = get_buffer();
    Gtk::TextIter start;
    Gtk::TextIter end;
    buffer->get_selection_bounds(start, end);
    Gtk::TextIter matchStart;
    Gtk::TextIter matchEnd;
    const auto search = [&](const Gtk::TextIter& from) {
        return how.backwards ? from.backward_search(text, flags, matchStart, matchEnd)
                             : from.forward_search(text, flags, matchStart, matchEnd);
    };
    // A text that has grown may still be met where it is selected; the same one is the next.
    bool found = search(start);
    const bool isSame =
        found && !how.backwards && start != end && matchStart == start && matchEnd == end;
    if (isSame) found = search(end);
    if (!found && how.wraps) found = search(how.backwards ? buffer->end() : buffer->begin());
    if (!found) return false;
    buffer->select_range(matchStart, matchEnd);
    constexpr double fromTheEdge = 0.15;
    scroll_to(matchStart, fromTheEdge);
    return true;
}

void ReaderTextView::size_allocate_vfunc(int width, int height, int baseline) {
    const int margin = ReaderColumn::margin(width);
    if (get_left_margin() != margin) {
        set_left_margin(margin);
        set_right_margin(margin);
    }
    Gtk::TextView::size_allocate_vfunc(width, height, baseline);
}

void ReaderTextView::addSome() {
    for (std::size_t bytes = 0; added_ < pieces_.size() && bytes < sliceBytes; ++added_) {
        addPiece(pieces_[added_]);
        bytes += pieces_[added_].text.size();
    }
    if (added_ == pieces_.size() || tick_ != 0) return;
    tick_ = add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
        addSome();
        if (added_ < pieces_.size()) return true;
        tick_ = 0;
        return false;
    });
}

void ReaderTextView::addPiece(const ReaderPiece& piece) {
    const auto buffer = get_buffer();
    const RoleTags& role = tags(piece.role);
    if (buffer->size() > 0) buffer->insert(buffer->end(), "\n");
    const int start = buffer->end().get_offset();
    buffer->insert(buffer->end(), piece.text);
    const auto begin = buffer->get_iter_at_offset(start);
    buffer->apply_tag(role.text, begin, buffer->end());
    buffer->apply_tag(piece.isLeftward ? role.leftward : role.rightward, begin, buffer->end());
    auto firstEnd = begin;
    firstEnd.forward_to_line_end();
    buffer->apply_tag(role.firstLine, begin, firstEnd);
}

void ReaderTextView::drawMarks(GtkSnapshot* snapshot) const {
    Gdk::Rectangle visible;
    get_visible_rect(visible);
    auto& view = const_cast<ReaderTextView&>(*this);
    Gtk::TextIter line;
    int top = 0;
    view.get_line_at_y(line, visible.get_y(), top);
    while (top < visible.get_y() + visible.get_height()) {
        if (line.has_tag(tags(ReaderRole::quote).text)) drawBar(snapshot, line);
        if (line.has_tag(tags(ReaderRole::item).firstLine)) drawBullet(snapshot, line);
        if (!line.forward_line()) break;
        int height = 0;
        view.get_line_yrange(line, top, height);
    }
}

void ReaderTextView::drawBullet(GtkSnapshot* snapshot, const Gtk::TextIter& line) const {
    Gdk::Rectangle first;
    const_cast<ReaderTextView&>(*this).get_iter_location(line, first);
    const bool leftward = line.has_tag(tags(ReaderRole::item).leftward);
    const int width = bullet_->get_pixel_logical_extents().get_width();
    const int x = leftward ? get_width() - get_right_margin() - width : get_left_margin();
    gtk_snapshot_save(snapshot);
    const graphene_point_t place{static_cast<float>(x), static_cast<float>(first.get_y())};
    gtk_snapshot_translate(snapshot, &place);
    gtk_snapshot_append_layout(snapshot, bullet_->gobj(), rgba({muted_}).gobj());
    gtk_snapshot_restore(snapshot);
}

void ReaderTextView::drawBar(GtkSnapshot* snapshot, const Gtk::TextIter& line) const {
    int top = 0;
    int height = 0;
    const_cast<ReaderTextView&>(*this).get_line_yrange(line, top, height);
    const RoleTags& quote = tags(ReaderRole::quote);
    const int above = line.has_tag(quote.firstLine)
                          ? quote.firstLine->property_pixels_above_lines().get_value()
                          : 0;
    const int x = line.has_tag(quote.leftward)
                      ? get_width() - get_right_margin() - ReaderColumn::quoteBar
                      : get_left_margin();
    fill(snapshot, Desk::sky, x, top + above, ReaderColumn::quoteBar, height - above);
}

}  // namespace orvu
