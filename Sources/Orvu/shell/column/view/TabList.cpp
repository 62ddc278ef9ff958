#include "shell/column/view/TabList.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "shell/column/ListEdits.h"
#include "shell/column/view/GroupHeader.h"
#include "shell/column/view/BrowserTabRow.h"

#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/label.h>
#include <gtkmm/viewport.h>

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

using Kind = ColumnKey::Kind;

/// The line above the tabs that are in no group.
class UngroupedHeading : public Gtk::Label, public ColumnLine {
public:
    UngroupedHeading() : Gtk::Label(phrase("UNGROUPED").c_str()) {
        Gtk::Widget::add_css_class("column-heading");
        Gtk::Widget::add_css_class("ungrouped-heading");
        set_xalign(0);
    }
    [[nodiscard]] Gtk::Widget& widget() override { return *this; }
    [[nodiscard]] bool isFocusable() const override { return false; }
    void setNarrow(Narrow narrow) override { set_visible(narrow == Narrow::no); }
};

}  // namespace

TabList::TabList(BrowserStore& store, ContextMenu& menu)
    : store_(store),
      input_(
          rows_, menu,
          [this](Gtk::Widget* widget) {
              const Index index = indexOf(widget);
              return index != count() ? &lineAt(index) : nullptr;
          },
          [this](guint key, ColumnLine& line) { return keyPressed(key, line); }),
      reveal_(*this, [this] { reveal(); }) {
    add_css_class("tab-scroll");
    rows_.add_css_class("tab-list");
    rows_.property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(rows_, phrase("Tabs"));
    set_child(rows_);
    dynamic_cast<Gtk::Viewport&>(*get_child()).set_scroll_to_focus(false);  // not all are laid out
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
    nameScrollBars(*this);
    set_vexpand(true);
    const auto focus = Gtk::EventControllerFocus::create();
    focus->signal_enter().connect(sigc::mem_fun(*this, &TabList::focusEntered));
    rows_.add_controller(focus);
    signal_map().connect(sigc::mem_fun(reveal_, &FrameRefresh::mark));
    store_.connectOpenedBehind(sigc::mem_fun(*this, &TabList::openedBehind));
    update();
}

TabList::~TabList() {
    rows_.setLines({});
    for (const auto& key : shown_) lines_.at(key)->widget().unparent();
}

// --- What the list shows ----------------------------------------------------------------------

void TabList::update() {
    const auto items = columnItems(store_);
    std::vector<ColumnKey> keys(items.size());
    std::ranges::transform(items, keys.begin(), &ColumnItem::key);
    const auto* const focus = focusOf(*this);
    const bool hadFocus = focus && indexOf(focus) != count();
    const Index index = indexOf(tabStop_);

    apply(keys);
    updateHeaders(items);
    updateActive();
    repairTabStop(index, hadFocus);
    forgetLines();
    if (indexOf(opened_) == count()) opened_.reset();
    if (opened_) reveal_.mark();
}

void TabList::apply(const std::vector<ColumnKey>& keys) {
    for (const auto& edit : listEdits(shown_, keys)) {
        Gtk::Widget& widget = line(edit.key).widget();
        if (edit.kind == ListEdit::Kind::remove) {
            widget.unparent();
        } else if (edit.after) {
            widget.insert_after(rows_, line(*edit.after).widget());
        } else {
            widget.insert_at_start(rows_);
        }
    }
    shown_ = keys;
    std::vector<ColumnLine*> lines(keys.size());
    std::ranges::transform(keys, lines.begin(), [this](const auto& key) { return &line(key); });
    rows_.setLines(std::move(lines));
}

ColumnLine& TabList::line(const ColumnKey& key) {
    auto& line = lines_[key];
    if (!line) {
        line = makeLine(key);
        line->setNarrow(narrow_);
    }
    return *line;
}

std::unique_ptr<ColumnLine> TabList::makeLine(const ColumnKey& key) {
    if (key.kind == Kind::group) return std::make_unique<GroupHeader>(store_, key.id);
    if (key.kind == Kind::ungroupedHeading) return std::make_unique<UngroupedHeading>();
    return std::make_unique<BrowserTabRow>(store_, store_.tab(key.id));
}

void TabList::updateHeaders(const std::vector<ColumnItem>& items) {
    for (const auto& item : items) {
        if (item.key.kind != Kind::group) continue;
        dynamic_cast<GroupHeader&>(line(item.key)).update(*store_.group(item.key.id), item.count);
    }
}

void TabList::updateActive() {
    std::optional<ColumnKey> active;
    if (store_.activeID()) active = ColumnKey{Kind::tab, *store_.activeID()};
    if (active == active_) return;
    const auto draw = [&](bool on) {
        const auto found = active_ ? lines_.find(*active_) : lines_.end();
        if (found != lines_.end()) dynamic_cast<BrowserTabRow&>(*found->second).setActive(on);
    };
    draw(false);
    active_ = active;
    draw(true);
    reveal_.mark();
}

void TabList::forgetLines() {
    // Lines of collapsed groups and of pinned tabs are kept until their tabs go.
    std::erase_if(lines_, [&](const auto& entry) {
        const auto* const row = dynamic_cast<const BrowserTabRow*>(entry.second.get());
        if (row) return !row->hasTab();
        return !entry.second->widget().get_parent();
    });
}

void TabList::setNarrow(Narrow narrow) {
    narrow_ = narrow;
    for (const auto& [key, line] : lines_) line->setNarrow(narrow);
    reveal_.mark();
}

// --- The keyboard -----------------------------------------------------------------------------

void TabList::moveTabStop(std::optional<ColumnKey> key) {
    if (tabStop_ == key) return;
    const auto previous = tabStop_ ? lines_.find(*tabStop_) : lines_.end();
    tabStop_ = key;
    if (key) line(*key).setTabStop(TabStop::yes);
    rows_.keepReady(key ? &line(*key) : nullptr);
    if (previous != lines_.end()) previous->second->setTabStop(TabStop::no);
}

void TabList::repairTabStop(Index previousPlace, bool hadFocus) {
    if (hadFocus && indexOf(tabStop_) != count()) return;  // the keyboard is where it was
    if (!hadFocus && indexOf(active_) != count()) return moveTabStop(active_);
    const auto begin = shown_.begin();
    const auto focusable = [this](const ColumnKey& key) { return line(key).isFocusable(); };
    const auto previous = begin + std::min(previousPlace, count());
    auto next = std::find_if(previous, shown_.end(), focusable);
    if (next == shown_.end()) {
        const auto before =
            std::find_if(std::make_reverse_iterator(previous), shown_.rend(), focusable);
        if (before != shown_.rend()) next = std::prev(before.base());
    }
    if (next == shown_.end()) return moveTabStop(std::nullopt);
    moveTabStop(*next);
    if (!hadFocus) return;
    line(*next).takeFocus();
    reveal_.mark();
}

bool TabList::keyPressed(guint key, ColumnLine& line) {
    const Index index = indexOf(&line.widget());
    switch (key) {
        case GDK_KEY_Up:
        case GDK_KEY_KP_Up:
            return focus(index - 1, -1);
        case GDK_KEY_Down:
        case GDK_KEY_KP_Down:
            return focus(index + 1, +1);
        case GDK_KEY_Home:
        case GDK_KEY_KP_Home:
            return focus(0, +1);
        case GDK_KEY_End:
        case GDK_KEY_KP_End:
            return focus(count() - 1, -1);
        case GDK_KEY_F2:
            line.rename();
            return true;
        default:
            return false;
    }
}

bool TabList::focus(Index index, Index step) {
    while (index >= 0 && index < count() && !lineAt(index).isFocusable()) index += step;
    if (index < 0 || index >= count()) return true;  // the arrows don't lead out of the list
    // The previous line stays ready until the keyboard has left it.
    ColumnLine& line = lineAt(index);
    line.setTabStop(TabStop::yes);
    line.widget().set_child_visible(true);
    line.takeFocus();
    moveTabStop(keyAt(index));
    rows_.reveal(line);
    return true;
}

void TabList::focusEntered() {
    if (const Index index = indexOf(tabStop_); index != count()) rows_.reveal(lineAt(index));
}

void TabList::openedBehind(const Uuid& tab) {
    opened_ = ColumnKey{Kind::tab, tab};  // its row comes with the update
}

void TabList::reveal() {
    if (!get_mapped()) return;
    if (get_height() == 0) return reveal_.mark();  // not laid out yet
    const auto opened = std::exchange(opened_, std::nullopt);
    const Index index = indexOf(opened);
    if (index != count()) {
        dynamic_cast<BrowserTabRow&>(lineAt(index)).lightUp();
        return rows_.reveal(lineAt(index));
    }
    if (const Index active = indexOf(active_); active != count()) rows_.reveal(lineAt(active));
}

TabList::Index TabList::indexOf(const std::optional<ColumnKey>& key) const {
    if (!key) return count();
    return std::ranges::find(shown_, *key) - shown_.begin();
}

TabList::Index TabList::indexOf(const Gtk::Widget* widget) const {
    while (widget && widget->get_parent() != &rows_) widget = widget->get_parent();
    if (!widget) return count();
    return std::ranges::find_if(
               shown_, [&](const auto& key) { return &lines_.at(key)->widget() == widget; }) -
           shown_.begin();
}

}  // namespace orvu
