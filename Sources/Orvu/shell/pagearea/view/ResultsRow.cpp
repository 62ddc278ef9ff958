#include "shell/pagearea/view/ResultsRow.h"

#include "shell/pagearea/ResultsLayout.h"

#include <algorithm>

namespace orvu {

ResultsRow::ResultsRow(Gtk::Widget& page) : page_(page) {
    set_expand(true);
    page_.set_parent(*this);
}

ResultsRow::~ResultsRow() {
    setAnswer(nullptr);
    page_.unparent();
}

void ResultsRow::setAnswer(Gtk::Widget* answer) {
    if (answer == answer_) return;
    if (answer_) answer_->unparent();
    answer_ = answer;
    if (answer_) answer_->set_parent(*this);
    queue_resize();
}

void ResultsRow::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                               int& natural, int& minimumBaseline, int& naturalBaseline) const {
    page_.measure(orientation, forSize, minimum, natural, minimumBaseline, naturalBaseline);
    minimumBaseline = naturalBaseline = -1;
}

void ResultsRow::size_allocate_vfunc(int width, int height, int) {
    const auto layout = ResultsLayout::in(width);
    place(page_, 0, answer_ ? layout.pageWidth : width, height);
    if (answer_) place(*answer_, layout.answerBegin, layout.answerWidthHere, height);
}

void ResultsRow::place(Gtk::Widget& child, int begin, int width, int height) {
    int least = 0;
    int natural = 0;
    int baseline = -1;
    // The toolkit wants each child measured before it is given a size.
    child.measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
    const bool isMirrored = get_direction() == Gtk::TextDirection::RTL;
    const int left = isMirrored ? get_width() - begin - width : begin;
    child.size_allocate(Gtk::Allocation{left, 0, std::max(width, least), height}, -1);
}

}  // namespace orvu
