#include "shell/library/view/LibraryList.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace orvu {
namespace {

constexpr int rowsOfPage = 10;  ///< how far Page Up and Page Down go

/// Takes a line out of the list: one that is only hidden is still seen by assistive technology.
void takeOut(Gtk::Widget& line) {
    if (line.get_parent()) line.unparent();
}

int heightOf(const LibraryEntry& entry) {
    return entry.isHeader() ? LibraryHeader::height : LibraryRow::height;
}

}  // namespace

LibraryList::LibraryList(LibraryView& library, SiteIcons icons,
                         Glib::RefPtr<Gtk::Adjustment> scroll)
    : library_(library),
      icons_(icons),
      scroll_(std::move(scroll)),
      menu_(*this),
      scrolled_(*this, [this] { showInSight(); }) {
    add_css_class("library-list");
    property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(*this, phrase("Library"));
    scroll_->signal_value_changed().connect(sigc::mem_fun(scrolled_, &FrameRefresh::mark));
    scroll_->property_page_size().signal_changed().connect(
        sigc::mem_fun(scrolled_, &FrameRefresh::mark));
    addKeys();
    addClicks();
    refresh();
}

LibraryList::~LibraryList() {
    notify_callbacks();
    forEachLine([](auto& line) { takeOut(line); });
}

void LibraryList::refresh() {
    const LibraryRow* const row = rowWithKeyboard();
    const auto kept = row ? row->entry() : std::nullopt;
    entries_ = library_.entries();
    layOut();
    if (kept && !indexOf(*kept) && !entries_.empty()) {
        // It went away: the one that comes to stand in its place has the keyboard.
        const std::size_t place = std::min(focused_, entries_.size() - 1);
        const auto next = rowFrom(place, +1);
        if (const auto index = next ? next : rowFrom(place, -1)) return focus(*index);
    }
    showInSight();
}

void LibraryList::layOut() {
    tops_.clear();
    tops_.reserve(entries_.size() + 1);
    int top = 0;
    for (const LibraryEntry& entry : entries_) {
        tops_.push_back(top);
        top += heightOf(entry);
    }
    tops_.push_back(top);
    queue_resize();
}

bool LibraryList::focusFirst() {
    const auto first = rowFrom(0, +1);
    if (first) focus(*first);
    return first.has_value();
}

// --- What is in sight -------------------------------------------------------------------------

/// The first entry in sight and the one behind the last, with half a page around.
std::pair<std::size_t, std::size_t> LibraryList::inSight() const {
    const double page = scroll_->get_page_size();
    const auto placeOf = [&](double height) {
        const auto found = std::ranges::upper_bound(tops_, static_cast<int>(height));
        const auto place = static_cast<std::size_t>(std::distance(tops_.begin(), found));
        return std::min(place > 0 ? place - 1 : 0, entries_.size());
    };
    const std::size_t first = placeOf(scroll_->get_value() - page / 2);
    const std::size_t last = placeOf(scroll_->get_value() + page * 3 / 2);
    return {first, std::min(last + 1, entries_.size())};
}

void LibraryList::showInSight() {
    const LibraryRow* const row = rowWithKeyboard();
    const auto focused = row && row->entry() ? indexOf(*row->entry()) : std::nullopt;
    const auto [first, end] = inSight();
    placed_.clear();
    const auto isWanted = [&, from = first, to = end](const LibraryEntry& entry) {
        const auto index = indexOf(entry);
        return index && ((*index >= from && *index < to) || index == focused);
    };
    forEachLine([&](auto& line) {
        if (line.entry() && !isWanted(*line.entry())) line.clear();
    });
    for (std::size_t index = first; index < end; ++index) place(index);
    if (focused && (*focused < first || *focused >= end)) place(*focused);
    if (focused) focused_ = *focused;
    forEachLine([](auto& line) {
        if (!line.entry()) takeOut(line);
    });
    queue_allocate();
}

void LibraryList::place(std::size_t index) {
    const LibraryEntry& entry = entries_[index];
    const auto add = [&](Gtk::Widget& widget) {
        placed_.push_back({&widget, tops_[index], heightOf(entry)});
    };
    if (entry.isHeader()) {
        auto& header = lineFor(headers_, entry, [&] {
            headers_.push_back(std::make_unique<LibraryHeader>());
            return headers_.back().get();
        });
        header.show(entry, library_.dayTitle(entry));
        if (!header.get_parent()) header.set_parent(*this);
        return add(header);
    }
    auto& row = lineFor(rows_, entry, [this] { return &makeRow(); });
    if (const auto said = library_.row(entry)) row.show(entry, *said);
    if (!row.get_parent()) row.set_parent(*this);
    add(row);
}

/// The widget that shows an entry already, else one that shows none, else a new one.
template <class Line>
Line& LibraryList::lineFor(Pool<Line>& pool, const LibraryEntry& entry, auto make) {
    Line* free = nullptr;
    for (const auto& each : pool) {
        if (!each->entry()) {
            free = each.get();
        } else if (each->entry()->isSame(entry)) {
            return *each;
        }
    }
    return free ? *free : *make();
}

LibraryRow& LibraryList::makeRow() {
    rows_.push_back(std::make_unique<LibraryRow>(icons_));
    LibraryRow& row = *rows_.back();
    row.signal_clicked().connect([this, &row] {
        if (row.entry()) library_.open(LibraryEntry{*row.entry()});
    });
    return row;
}

Gtk::SizeRequestMode LibraryList::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void LibraryList::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    minimum = natural = orientation == Gtk::Orientation::VERTICAL ? tops_.back() : 0;
}

void LibraryList::size_allocate_vfunc(int width, int, int) {
    for (const Placed& each : placed_) {
        int minimum = 0;
        int natural = 0;
        int baseline = 0;
        each.widget->measure(Gtk::Orientation::HORIZONTAL, -1, minimum, natural, baseline,
                             baseline);
        each.widget->size_allocate({0, each.top, std::max(width, minimum), each.height}, -1);
    }
}

// --- Keys and clicks --------------------------------------------------------------------------

void LibraryList::addKeys() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &LibraryList::keyPressed), false);
    add_controller(keys);
}

bool LibraryList::keyPressed(guint key, guint, Gdk::ModifierType modifiers) {
    using Modifier = Gdk::ModifierType;
    const auto held = modifiers & (Modifier::SHIFT_MASK | Modifier::CONTROL_MASK |
                                   Modifier::ALT_MASK | Modifier::SUPER_MASK);
    LibraryRow* const row = rowWithKeyboard();
    if (!row || !row->entry()) return false;
    const bool asksForMenu = (key == GDK_KEY_F10 && held == Modifier::SHIFT_MASK) ||
                             (key == GDK_KEY_Menu && held == Modifier{});
    if (asksForMenu) {
        openMenu(*row, {0, 0, row->get_width(), row->get_height()});
        return true;
    }
    if (held == Modifier::CONTROL_MASK && isReturnKey(key)) {
        library_.openInNewTab(LibraryEntry{*row->entry()});
        return true;
    }
    if (held == Modifier{} && (key == GDK_KEY_Delete || key == GDK_KEY_KP_Delete)) {
        library_.remove(LibraryEntry{*row->entry()});
        return true;
    }
    if (held == Modifier{} && move(key)) return true;
    const auto character = gdk_keyval_to_unicode(key);
    const bool isText = (held & ~Modifier::SHIFT_MASK) == Modifier{} && key != GDK_KEY_space &&
                        g_unichar_isgraph(character);
    if (isText) typed_.emit(character);
    return isText;
}

/// Takes the keyboard to another row.
bool LibraryList::move(guint key) {
    if (entries_.empty()) return false;
    const LibraryRow* const row = rowWithKeyboard();
    const auto from = row && row->entry() ? indexOf(*row->entry()) : std::nullopt;
    if (!from) return false;
    const std::size_t last = entries_.size() - 1;
    const auto far = [&](std::size_t index) { return std::min(index, last); };
    std::optional<std::size_t> to;
    switch (key) {
        case GDK_KEY_Down:
            to = *from < last ? rowFrom(*from + 1, +1) : std::nullopt;
            break;
        case GDK_KEY_Up:
            to = *from > 0 ? rowFrom(*from - 1, -1) : std::nullopt;
            break;
        case GDK_KEY_Page_Down:
            to = rowFrom(far(*from + rowsOfPage), -1);
            break;
        case GDK_KEY_Page_Up:
            to = rowFrom(*from > rowsOfPage ? *from - rowsOfPage : 0, +1);
            break;
        case GDK_KEY_Home:
            to = rowFrom(0, +1);
            break;
        case GDK_KEY_End:
            to = rowFrom(last, -1);
            break;
        default:
            return false;
    }
    if (to) focus(*to);
    return to.has_value() || key == GDK_KEY_Down;
}

void LibraryList::focus(std::size_t index) {
    reveal(index);
    showInSight();
    const auto found = std::ranges::find_if(rows_, [&](const auto& row) {
        return row->entry() && row->entry()->isSame(entries_[index]);
    });
    if (found == rows_.end()) return;
    focused_ = index;
    (*found)->grab_focus();
}

void LibraryList::reveal(std::size_t index) {
    // The list may have grown since it was laid out.
    scroll_->set_upper(std::max<double>(scroll_->get_upper(), tops_.back()));
    // With the header of its day, where that is the line above.
    const bool isBelowHeader = index > 0 && entries_[index - 1].isHeader();
    const int top = isBelowHeader ? tops_[index - 1] : tops_[index];
    scroll_->clamp_page(top, tops_[index + 1]);
}

void LibraryList::addClicks() {
    for (const unsigned button : {unsigned{GDK_BUTTON_MIDDLE}, unsigned{GDK_BUTTON_SECONDARY}}) {
        const auto click = Gtk::GestureClick::create();
        click->set_button(button);
        click->signal_pressed().connect([this, button](int, double x, double y) {
            LibraryRow* const row = rowAt(pick(x, y));
            if (!row || !row->entry()) return;
            if (button == GDK_BUTTON_MIDDLE) {
                library_.openInNewTab(LibraryEntry{*row->entry()});
                return;
            }
            Gtk::Widget& list = *this;
            double left = 0;
            double top = 0;
            list.translate_coordinates(*row, x, y, left, top);
            openMenu(*row, {static_cast<int>(left), static_cast<int>(top), 1, 1});
        });
        add_controller(click);
    }
}

void LibraryList::openMenu(LibraryRow& row, const Gdk::Rectangle& at) {
    std::vector<MenuEntry> lines;
    for (const auto& line : library_.menu()) {
        lines.push_back({.title = std::string{line.title},
                         .run = [this, action = line.action, entry = *row.entry()] {
                             library_.perform(action, entry);
                         }});
    }
    menu_.show(lines, row, at);
}

// --- Which is which ---------------------------------------------------------------------------

LibraryRow* LibraryList::rowAt(Gtk::Widget* widget) const {
    for (auto* each = widget; each && each != this; each = each->get_parent()) {
        if (auto* const row = dynamic_cast<LibraryRow*>(each)) return row;
    }
    return nullptr;
}

LibraryRow* LibraryList::rowWithKeyboard() const { return rowAt(focusOf(*this)); }

std::optional<std::size_t> LibraryList::indexOf(const LibraryEntry& entry) const {
    const auto found =
        std::ranges::find_if(entries_, [&](const auto& each) { return each.isSame(entry); });
    if (found == entries_.end()) return std::nullopt;
    return static_cast<std::size_t>(std::distance(entries_.begin(), found));
}

/// The first row from an entry on, or back.
std::optional<std::size_t> LibraryList::rowFrom(std::size_t index, int step) const {
    auto place = static_cast<std::ptrdiff_t>(index);
    const auto size = std::ssize(entries_);
    for (; place >= 0 && place < size; place += step) {
        const auto found = static_cast<std::size_t>(place);
        if (!entries_[found].isHeader()) return found;
    }
    return std::nullopt;
}

}  // namespace orvu
