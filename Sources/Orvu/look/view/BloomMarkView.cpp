#include "look/view/BloomMarkView.h"

#include "look/drawing/view/Drawing.h"
#include "look/view/Accessible.h"

#include <gtkmm/snapshot.h>

namespace orvu {

BloomMarkView::BloomMarkView(int size, BloomMark mark, Color color)
    : size_(size), mark_(mark), color_(color) {
    property_accessible_role() = Gtk::Accessible::Role::IMG;
    setAccessibleLabel(*this, "Orvu");
}

Gtk::SizeRequestMode BloomMarkView::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void BloomMarkView::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                                  int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = size_;
    minimumBaseline = naturalBaseline = -1;
}

void BloomMarkView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const auto width = static_cast<float>(get_width());
    const auto height = static_cast<float>(get_height());
    const graphene_rect_t bounds{{0, 0}, {width, height}};
    const auto context = snapshot->append_cairo(&bounds);
    const PathRectangle frame{0, 0, width, height};
    // Both layers are one picture, which the hole goes through.
    context->push_group();
    setSource(context, {color_});
    addPath(context, mark_.petals().outline(frame));
    context->fill();
    const auto hole = mark_.hole(frame);
    context->set_operator(Cairo::Context::Operator::DEST_OUT);
    fillDot(context, hole.centre, hole.diameter);
    context->pop_group_to_source();
    context->paint();
}

}  // namespace orvu
