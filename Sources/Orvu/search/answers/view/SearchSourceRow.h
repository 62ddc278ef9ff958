#pragma once

#include "search/answers/SearchAnswerCard.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>

namespace orvu {

/// A result under the answer, with the number by which the answer cites it.
class SearchSourceRow : public Gtk::Button {
public:
    SearchSourceRow(const SearchAnswer::Source& source, SiteIcons icons,
                    const std::function<void(const Url&)>& open);

private:
    Gtk::Box line_;
    Gtk::Label number_;
    SiteIcon icon_;
    Gtk::Box column_;
    Gtk::Label title_;
    Gtk::Label site_;
};

}  // namespace orvu
