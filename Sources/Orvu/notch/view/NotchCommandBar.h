#pragma once

#include "look/motion/view/SlidingBox.h"
#include "look/view/DotFaceView.h"
#include "notch/AddressNotchBody.h"
#include "notch/view/NotchChoice.h"
#include "notch/view/NotchCorrection.h"
#include "notch/view/NotchField.h"
#include "notch/view/NotchFooterView.h"
#include "notch/view/NotchRow.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <vector>

namespace orvu {

/// The open notch: the field, what Return does, and the candidates.
class NotchCommandBar : public SlidingBox {
public:
    /// `notch` and `store` must outlive the view.
    NotchCommandBar(AddressNotch& notch, const BrowserStore& store);

    /// Whose state to show; it must outlive the view or be replaced.
    void setBody(AddressNotchBody& body);
    void refresh();
    /// Takes the keyboard with the whole text selected.
    void focusField();

private:
    static constexpr int fieldRowHeight = 50;
    static constexpr int hostIconSize = 18;
    static constexpr int globeSize = 13;

    [[nodiscard]] NotchField::Handlers fieldHandlers();
    void addFieldRow();
    void addChoices();
    void addList();
    void refreshFieldRow();
    void refreshChoices();
    void refreshRows();
    void revealSelected();

    AddressNotch& notch_;
    const SiteIcons icons_;
    AddressNotchBody* body_ = nullptr;

    Gtk::Box fieldRow_{Gtk::Orientation::HORIZONTAL, 12};
    Gtk::Image magnifier_;
    Gtk::Label bang_;
    NotchField field_{fieldHandlers()};
    Gtk::Label keyHint_;
    NotchCorrection correction_;
    Gtk::Box choices_{Gtk::Orientation::HORIZONTAL, 10};
    NotchChoice primary_;
    SiteIcon primarySite_;
    Gtk::Image primaryGlobe_;
    NotchChoice ask_;
    DotFaceView face_;
    Gtk::ScrolledWindow scroll_;
    SlidingBox list_{Motion::snappy, 0};
    std::vector<std::unique_ptr<NotchRow>> rows_;  ///< as many as were ever needed
    NotchFooterView footer_;
};

}  // namespace orvu
