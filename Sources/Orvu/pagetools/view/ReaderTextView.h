#pragma once

#include "pagetools/ReaderText.h"
#include "profiles/ReaderTheme.h"
#include "platform/WebView.h"

#include <glibmm/extraclassinit.h>
#include <gtkmm/textview.h>

#include <array>
#include <span>
#include <vector>

namespace orvu {

/// An article as one text that can be read, scrolled and selected, but not changed: a column in
/// the middle of the room that there is. It stands in a scrolled window.
class ReaderTextView : public Glib::ExtraClassInit, public Gtk::TextView {
public:
    explicit ReaderTextView(std::vector<ReaderPiece> pieces);
    ~ReaderTextView() override;

    void setLook(double size, ReaderTheme theme);
    /// Selects the next match of a text from the selection on, and brings it into sight. Whether
    /// there is one; without one the selection stays.
    bool find(const std::string& text, FindConfiguration how);

protected:
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    /// How the pieces of one role look.
    struct RoleTags {
        Glib::RefPtr<Gtk::TextTag> text;
        Glib::RefPtr<Gtk::TextTag> firstLine;  ///< stands apart from what is above
        /// Lines that begin further in, on the side where they begin.
        Glib::RefPtr<Gtk::TextTag> rightward;
        Glib::RefPtr<Gtk::TextTag> leftward;
    };
    static constexpr std::size_t roleCount = 7;

    static void initClass(void* viewClass, void* data);
    static void snapshotLayer(GtkTextView* view, GtkTextViewLayer layer, GtkSnapshot* snapshot);

    void addTags();
    void styleTags(double size);
    void addSome();
    void addPiece(const ReaderPiece& piece);
    void drawMarks(GtkSnapshot* snapshot) const;
    void drawBullet(GtkSnapshot* snapshot, const Gtk::TextIter& line) const;
    void drawBar(GtkSnapshot* snapshot, const Gtk::TextIter& line) const;
    [[nodiscard]] RoleTags& tags(ReaderRole role);
    [[nodiscard]] const RoleTags& tags(ReaderRole role) const;

    const std::vector<ReaderPiece> pieces_;
    std::size_t added_ = 0;  ///< how many of them stand in the text
    std::array<RoleTags, roleCount> tags_;
    Glib::RefPtr<Pango::Layout> bullet_;
    Color muted_;
    guint tick_ = 0;
};

}  // namespace orvu
