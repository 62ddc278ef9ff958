#pragma once

#include "look/motion/view/SpringAnimation.h"
#include "update/UpdateAsk.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <functional>

namespace orvu {

/// The card that asks once whether Orvu may update by itself. It comes up from below and leaves the
/// same way.
class UpdateAskView : public Gtk::Box {
public:
    /// `ask` must outlive this. `gone` is called when the card has left, within
    /// a frame of its own.
    UpdateAskView(UpdateAsk& ask, std::function<void()> gone);
    ~UpdateAskView() override;

    void enter();
    void leave();

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void addHead();
    void addText();
    void addButtons();
    void addButton(std::string_view title, const char* cssClass, UpdateAsk::Answer answer);
    void step(double value);

    UpdateAsk& ask_;
    const std::function<void()> gone_;
    bool isLeaving_ = false;
    Gtk::Box head_;
    Gtk::Image symbol_;
    Gtk::Label title_;
    Gtk::Label text_;
    Gtk::Box buttons_;
    SpringAnimation shown_;
};

}  // namespace orvu
