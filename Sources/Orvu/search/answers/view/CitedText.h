#pragma once

#include "search/answers/SearchAnswerCard.h"

#include <gtkmm/label.h>

#include <vector>

namespace orvu {

/// Shows an answer with its citations raised, as plain text.
void setCitedText(Gtk::Label& label, const std::vector<SearchAnswerCard::Run>& runs);

}  // namespace orvu
