#pragma once

#include "core/BrowserTab.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/button.h>

#include <functional>

namespace orvu {

/// A tab that can be brought into a question with a press.
class KestoMentionRow : public Gtk::Button {
public:
    KestoMentionRow(const BrowserTab& tab, SiteIcons icons, std::function<void()> mention);

private:
    static constexpr int iconSize = 14;
};

}  // namespace orvu
