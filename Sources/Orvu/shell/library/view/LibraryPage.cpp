#include "shell/library/view/LibraryPage.h"

#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <string>
#include <utility>

namespace orvu {
namespace {

constexpr int symbolSize = 15;
constexpr int magnifierSize = 15;

/// What a button of the side column shows: a symbol and a title.
void setUp(Gtk::Button& button, std::string_view symbol, std::string_view title) {
    auto& line = *Gtk::make_managed<Gtk::Box>();
    line.add_css_class("library-button-line");
    auto& image = *Gtk::make_managed<Gtk::Image>();
    setSymbol(image, symbol, symbolSize);
    line.append(image);
    auto& label = *Gtk::make_managed<Gtk::Label>(std::string{title});
    label.set_xalign(0);
    line.append(label);
    button.set_child(line);
    button.add_css_class("library-button");
    setAccessibleLabel(button, std::string{title});
}

}  // namespace

LibraryPage::LibraryPage(std::shared_ptr<BrowserStore> store, AppServices& services)
    : store_(std::move(store)),
      library_(*store_, services),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("library");
    set_expand(true);
    list_.emplace(library_, store_->icons(), scroller_.get_vadjustment());
    addSide();
    addMain();
    set_child(columns_);
    addKeys();
    library_.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    library_.query.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    library_.confirmClear.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

LibraryPage::~LibraryPage() {
    notify_callbacks();
    if (question_) remove_overlay(*question_);
    scroller_.unset_child();
}

void LibraryPage::addSide() {
    side_.add_css_class("library-side");
    auto& heading = *Gtk::make_managed<Gtk::Label>(std::string{LibraryView::heading});
    heading.add_css_class("library-heading");
    heading.set_xalign(0);
    side_.append(heading);
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        const auto& facts = LibraryView::sections.at(i);
        Gtk::ToggleButton& button = sections_.at(i);
        setUp(button, facts.symbol, facts.title);
        if (i > 0) button.set_group(sections_.front());
        button.signal_toggled().connect([this, &button, section = facts.section] {
            if (button.get_active() && library_.section() != section) library_.show(section);
        });
        side_.append(button);
    }
    auto& room = *Gtk::make_managed<Gtk::Box>();
    room.set_vexpand(true);
    side_.append(room);
    setUp(back_, LibraryView::backSymbol, LibraryView::backTitle);
    back_.signal_clicked().connect([this] { library_.backToPage(); });
    side_.append(back_);
    columns_.append(side_);
}

void LibraryPage::addMain() {
    main_.add_css_class("library-main");
    main_.set_expand(true);
    titleLine_.add_css_class("library-title-line");
    title_.add_css_class("library-name");
    title_.set_xalign(0);
    title_.set_hexpand(true);
    clear_.add_css_class("sheet-button");
    clear_.set_valign(Gtk::Align::CENTER);
    clear_.signal_clicked().connect([this] { library_.askToClear(); });
    main_.append(titleLine_);
    addSearch();
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_expand(true);
    scroller_.set_child(*list_);
    nameScrollBars(scroller_);
    empty_.add_css_class("library-empty");
    empty_.set_wrap(true);
    empty_.set_justify(Gtk::Justification::CENTER);
    empty_.set_expand(true);
    body_.set_expand(true);
    main_.append(body_);
    columns_.append(main_);
}

void LibraryPage::addSearch() {
    searchLine_.add_css_class("library-search");
    setSymbol(magnifier_, LibraryView::searchSymbol, magnifierSize);
    searchLine_.append(magnifier_);
    search_.set_hexpand(true);
    search_.signal_changed().connect([this] { library_.query.set(search_.get_text().raw()); });
    search_.signal_activate().connect([this] { list_->focusFirst(); });
    searchLine_.append(search_);
    main_.append(searchLine_);
    list_->connectTyped(sigc::mem_fun(*this, &LibraryPage::startTyping));
}

/// Down goes from the search to the list. Escape empties the search, and then goes back to the page.
void LibraryPage::addKeys() {
    const auto inSearch = Gtk::EventControllerKey::create();
    inSearch->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            return key == GDK_KEY_Down && list_->focusFirst();
        },
        false);
    search_.add_controller(inSearch);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (key != GDK_KEY_Escape || question_) return false;
            if (search_.get_text_length() > 0) {
                search_.set_text("");
                search_.grab_focus();
            } else {
                library_.backToPage();
            }
            return true;
        },
        false);
    add_controller(keys);
}

void LibraryPage::startTyping(gunichar character) {
    search_.grab_focus();
    search_.set_text(search_.get_text() + Glib::ustring(1, character));
    search_.set_position(-1);
}

void LibraryPage::focusContent() {
    if (question_) {
        question_->focusCancel();
    } else {
        search_.grab_focus();
    }
}

void LibraryPage::refresh() {
    const auto& facts = library_.facts();
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        const bool isShown = LibraryView::sections.at(i).section == facts.section;
        if (sections_.at(i).get_active() != isShown) sections_.at(i).set_active(isShown);
    }
    if (shownSection_ != facts.section) {
        shownSection_ = facts.section;
        scroller_.get_vadjustment()->set_value(0);
    }
    title_.set_text(std::string{facts.title});
    setChildren(titleLine_, library_.canClear() ? std::vector<Gtk::Widget*>{&title_, &clear_}
                                                : std::vector<Gtk::Widget*>{&title_});
    search_.set_placeholder_text(library_.prompt());
    setAccessibleLabel(search_, library_.prompt());
    empty_.set_text(facts.emptyText.c_str());
    const bool isEmpty = library_.entries().empty();
    const bool hadKeyboard = isEmpty && holdsKeyboard(scroller_);
    list_->refresh();
    setChildren(body_, {isEmpty ? static_cast<Gtk::Widget*>(&empty_) : &scroller_});
    if (hadKeyboard) search_.grab_focus();
    showQuestion();
}

void LibraryPage::showQuestion() {
    const bool isAsked = library_.confirmClear.get();
    answered_.reset();
    if (isAsked == static_cast<bool>(question_)) return;
    // The keyboard goes first, so that nothing with it is switched off or taken away.
    if (isAsked) {
        question_ = std::make_unique<LibraryQuestion>(library_);
        add_overlay(*question_);
        question_->focusCancel();
        columns_.set_sensitive(false);
    } else {
        columns_.set_sensitive(true);
        search_.grab_focus();
        remove_overlay(*question_);
        answered_ = std::move(question_);
    }
}

}  // namespace orvu
