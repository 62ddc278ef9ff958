#include "assistant/view/KestoPanelView.h"

#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"

namespace orvu {
namespace {

constexpr int headerSpacing = 12;
constexpr double faceDot = 2;
constexpr double faceGap = 1;
constexpr int crossSize = 13;

}  // namespace

KestoPanelView::KestoPanelView(KestoPanel& panel)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      panel_(panel),
      header_(Gtk::Orientation::HORIZONTAL, headerSpacing),
      face_(faceDot, faceGap),
      title_(std::string{KestoPanel::title}),
      conversation_(panel),
      composer_(panel),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("kesto-panel");
    set_size_request(width, -1);
    set_overflow(Gtk::Overflow::HIDDEN);
    property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(*this, std::string{KestoPanel::title});
    addHeader();
    append(conversation_);
    append(composer_);
    const auto mark = sigc::mem_fun(refresh_, &FrameRefresh::mark);
    panel_.connectChanged(mark);
    panel_.kesto().model().connectChanged(mark);
    panel_.kesto().model().look();
    refresh();
}

void KestoPanelView::addHeader() {
    header_.add_css_class("kesto-header");
    face_.set_valign(Gtk::Align::CENTER);
    header_.append(face_);
    title_.add_css_class("kesto-title");
    title_.set_xalign(0);
    title_.set_hexpand(true);
    header_.append(title_);
    setSymbol(cross_, "xmark", crossSize);
    close_.set_child(cross_);
    close_.add_css_class("icon-button");
    close_.set_valign(Gtk::Align::CENTER);
    setAccessibleLabel(close_, std::string{KestoPanel::closeLabel});
    close_.signal_clicked().connect([this] { panel_.close(); });
    header_.append(close_);
    append(header_);
}

void KestoPanelView::refresh() {
    face_.setMood(panel_.mood());
    face_.set_tooltip_text(panel_.kesto().model().modelName());
    conversation_.refresh();
    composer_.refresh();
    lookAgain();
}

/// A server that comes up is found while the person reads that there is none.
void KestoPanelView::lookAgain() {
    const bool saysWhatIsMissing =
        panel_.lastQuestion().empty() && panel_.kesto().unavailableReason().has_value();
    if (!saysWhatIsMissing) {
        look_.reset();
    } else if (!look_) {
        look_ = panel_.store().loop().after(lookPause, [this] {
            auto& self = *this;  // what was scheduled may end with its place
            self.look_.reset();
            self.panel_.kesto().model().look();
            self.lookAgain();
        });
    }
}

}  // namespace orvu
