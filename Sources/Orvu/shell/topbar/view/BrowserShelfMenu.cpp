#include "shell/topbar/view/BrowserShelfMenu.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"
#include "look/view/Tooltips.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/separator.h>

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 120;
constexpr int badgeSize = 16;
constexpr int width = 280;
constexpr int maxHeight = 420;

/// What a line of the menu shows.
Gtk::Widget& content(const BrowserStore& store, const MenuEntry& entry, const std::string& title) {
    auto& line = *Gtk::make_managed<Gtk::Box>();
    line.add_css_class("shelf-line");
    hideFromAccessibility(line);
    if (entry.kind == MenuEntry::Kind::action && !entry.host.empty()) {
        auto& badge = *Gtk::make_managed<SiteIcon>(store.icons(), badgeSize);
        badge.setHost(entry.host);
        line.append(badge);
    }
    auto& label = *Gtk::make_managed<Gtk::Label>(title);
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.set_single_line_mode(true);
    label.set_hexpand(true);
    label.set_xalign(0);
    line.append(label);
    return line;
}

}  // namespace

BrowserShelfMenu::BrowserShelfMenu(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)), refresh_(*this, [this] { refresh(); }) {
    add_css_class("shelf-button");
    setSymbol(arrow_, "arrow.up", 12);
    count_.add_css_class("shelf-count");
    hideFromAccessibility(line_);
    line_.add_css_class("shelf-label");
    line_.append(arrow_);
    line_.append(word_);
    line_.append(count_);
    set_child(line_);
    set_valign(Gtk::Align::CENTER);
    set_focus_on_click(false);
    set_tooltip_text(shelfHelp.c_str());
    signal_clicked().connect(sigc::mem_fun(*this, &BrowserShelfMenu::open));

    lines_.property_accessible_role() = Gtk::Accessible::Role::MENU;
    setAccessibleLabel(lines_, phrase("Shelf"));
    scroll_.set_child(lines_);
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    nameScrollBars(scroll_);
    scroll_.set_propagate_natural_height(true);
    scroll_.set_max_content_height(maxHeight);
    scroll_.set_size_request(width, -1);
    menu_.set_child(scroll_);
    menu_.set_has_arrow(false);
    menu_.set_halign(Gtk::Align::END);  // the window ends here
    menu_.add_css_class("shelf-menu");
    menu_.set_parent(*this);
    hideTooltipWhileOpen(*this, menu_);
    menu_.signal_closed().connect(sigc::mem_fun(*this, &BrowserShelfMenu::closed));
    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

BrowserShelfMenu::~BrowserShelfMenu() {
    notify_callbacks();
    menu_.unparent();
}

void BrowserShelfMenu::open() {
    fill();
    setAccessibleExpanded(*this, true);
    menu_.popup();
}

void BrowserShelfMenu::closed() { setAccessibleExpanded(*this, false); }

void BrowserShelfMenu::fill() {
    while (auto* const line = lines_.get_first_child()) lines_.remove(*line);
    for (const auto& entry : shelfMenu(*store_)) append(entry);
}

void BrowserShelfMenu::append(const MenuEntry& entry) {
    if (entry.kind == MenuEntry::Kind::separator) {
        lines_.append(*Gtk::make_managed<Gtk::Separator>());
        return;
    }
    if (entry.kind == MenuEntry::Kind::text) {
        auto& text = *Gtk::make_managed<Gtk::Label>(entry.title);
        text.add_css_class("shelf-text");
        text.set_wrap(true);
        text.set_max_width_chars(1);  // as wide as the menu, not as the text
        text.set_xalign(0);
        lines_.append(text);
        return;
    }
    const std::string title = oneLine(entry.title, titleLimit);
    auto& button = *Gtk::make_managed<Gtk::Button>();
    button.property_accessible_role() = Gtk::Accessible::Role::MENU_ITEM;
    button.add_css_class("shelf-item");
    button.set_child(content(*store_, entry, title));
    setAccessibleLabel(button, title.empty() ? entry.host : title);
    const auto close = sigc::mem_fun(menu_, &Gtk::Popover::popdown);
    button.signal_clicked().connect([close, run = entry.run] {
        close();
        run();
    });
    lines_.append(button);
}

void BrowserShelfMenu::refresh() {
    const auto count = store_->shelf().size();
    const std::string number = std::to_string(count);
    count_.set_visible(count > 0);
    if (count_.get_text().raw() != number) count_.set_text(number);
    setAccessibleLabel(*this, count > 0 ? trn("Shelf, {1} tab", "Shelf, {1} tabs", count)
                                        : std::string{phrase("Shelf")});
}

}  // namespace orvu
