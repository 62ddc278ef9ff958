#include "assistant/view/KestoMentionRow.h"

#include "assistant/view/KestoText.h"
#include "foundation/text/DisplayHost.h"
#include "foundation/text/Text.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <utility>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr std::size_t titleLimit = 200;

}  // namespace

KestoMentionRow::KestoMentionRow(const BrowserTab& tab, SiteIcons icons,
                                 std::function<void()> mention) {
    add_css_class("kesto-mention");
    const std::string title = oneLine(tab.title(), titleLimit);
    auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, spacing);
    auto* const icon = Gtk::make_managed<SiteIcon>(icons, iconSize);
    icon->set_valign(Gtk::Align::CENTER);
    icon->setHost(tab.host());
    line->append(*icon);
    auto* const name = Gtk::make_managed<Gtk::Label>(title);
    cutText(*name);
    name->add_css_class("kesto-mention-title");
    name->set_hexpand(true);
    line->append(*name);
    const std::string site = displayHost(replacingAll(tab.host(), "www.", ""));
    auto* const host = Gtk::make_managed<Gtk::Label>(site);
    host->set_ellipsize(Pango::EllipsizeMode::START);  // the end tells whose it is
    host->set_single_line_mode(true);
    host->add_css_class("kesto-mention-host");
    line->append(*host);
    set_child(*line);
    setAccessibleLabel(*this, title + " " + site);
    signal_clicked().connect([run = std::move(mention)] {
        const auto mentionNow = run;  // the row goes with what it does
        mentionNow();
    });
}

}  // namespace orvu
