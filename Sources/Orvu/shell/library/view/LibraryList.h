#pragma once

#include "library/LibraryView.h"
#include "look/view/FrameRefresh.h"
#include "shell/library/view/LibraryRow.h"
#include "shell/menus/view/ContextMenu.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/widget.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace orvu {

/// The entries of the library, one below the other. There are widgets only for those in sight, and
/// for the one with the keyboard, so five thousand cost as much as fifty.
class LibraryList : public Gtk::Widget {
public:
    /// `scroll` is how far the box around this one is scrolled down. `library` must outlive the list.
    LibraryList(LibraryView& library, SiteIcons icons, Glib::RefPtr<Gtk::Adjustment> scroll);
    ~LibraryList() override;

    /// Shows what the library says now. To be called after each of its changes, before the next
    /// frame.
    void refresh();
    /// Gives the keyboard to the first entry; false without one.
    bool focusFirst();

    /// Calls `slot` with a character that was typed here: it belongs to the search.
    sigc::connection connectTyped(const sigc::slot<void(gunichar)>& slot) {
        return typed_.connect(slot);
    }

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    using Entries = std::vector<LibraryEntry>;
    template <class Line>
    using Pool = std::vector<std::unique_ptr<Line>>;

    /// A widget at its place in the list.
    struct Placed {
        Gtk::Widget* widget;
        int top;
        int height;
    };

    void addKeys();
    void addClicks();
    bool keyPressed(guint key, guint code, Gdk::ModifierType modifiers);
    bool move(guint key);
    void layOut();
    void showInSight();
    void place(std::size_t index);
    template <class Line>
    [[nodiscard]] Line& lineFor(Pool<Line>& pool, const LibraryEntry& entry, auto make);
    /// Hands over every row and header there is, in use or not.
    void forEachLine(const auto& visit) const {
        for (const auto& row : rows_) visit(*row);
        for (const auto& header : headers_) visit(*header);
    }
    void focus(std::size_t index);
    void reveal(std::size_t index);
    void openMenu(LibraryRow& row, const Gdk::Rectangle& at);
    [[nodiscard]] LibraryRow& makeRow();
    [[nodiscard]] LibraryRow* rowAt(Gtk::Widget* widget) const;
    [[nodiscard]] LibraryRow* rowWithKeyboard() const;
    [[nodiscard]] std::optional<std::size_t> indexOf(const LibraryEntry& entry) const;
    [[nodiscard]] std::optional<std::size_t> rowFrom(std::size_t index, int step) const;
    [[nodiscard]] std::pair<std::size_t, std::size_t> inSight() const;

    LibraryView& library_;
    const SiteIcons icons_;
    const Glib::RefPtr<Gtk::Adjustment> scroll_;
    ContextMenu menu_;
    Entries entries_;
    std::vector<int> tops_;  ///< of each entry, and of the end
    Pool<LibraryRow> rows_;
    Pool<LibraryHeader> headers_;
    std::vector<Placed> placed_;
    std::size_t focused_ = 0;  ///< the entry that had the keyboard last
    FrameRefresh scrolled_;
    sigc::signal<void(gunichar)> typed_;
};

}  // namespace orvu
