#pragma once

#include <gtkmm/box.h>

#include <string>
#include <vector>

namespace orvu {

/// What the assistant has read: a heading, and a chip for each title.
class FlowChips : public Gtk::Box {
public:
    FlowChips();

    void setTexts(const std::vector<std::string>& texts);

private:
    std::vector<std::string> texts_;
};

}  // namespace orvu
