#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/column/ColumnItems.h"
#include "shell/column/view/ColumnInput.h"
#include "shell/column/view/LineBox.h"

#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace orvu {

/// The groups and tabs of a window, as lines that scroll. A line keeps its widget as long as its
/// tab or group lives; a change touches no other lines than those it is about.
class TabList : public Gtk::ScrolledWindow {
public:
    /// `store` and `menu` must outlive the list.
    TabList(BrowserStore& store, ContextMenu& menu);
    ~TabList() override;

    /// Shows the store as it is now.
    void update();
    void setNarrow(Narrow narrow);
    /// See `ColumnInput`.
    [[nodiscard]] bool takeFocusClaim() { return input_.takeFocusClaim(); }

private:
    using Index = std::vector<ColumnKey>::difference_type;

    void apply(const std::vector<ColumnKey>& keys);
    [[nodiscard]] ColumnLine& line(const ColumnKey& key);
    [[nodiscard]] std::unique_ptr<ColumnLine> makeLine(const ColumnKey& key);
    void updateHeaders(const std::vector<ColumnItem>& items);
    void updateActive();
    void forgetLines();
    void moveTabStop(std::optional<ColumnKey> key);
    void repairTabStop(Index previousPlace, bool hadFocus);

    bool keyPressed(guint key, ColumnLine& line);
    bool focus(Index index, Index step);
    void focusEntered();
    void openedBehind(const Uuid& tab);
    void reveal();

    [[nodiscard]] Index indexOf(const std::optional<ColumnKey>& key) const;
    /// The index of the line that holds `widget`; behind the last one if none does.
    [[nodiscard]] Index indexOf(const Gtk::Widget* widget) const;
    [[nodiscard]] Index count() const { return std::ssize(shown_); }
    [[nodiscard]] ColumnLine& lineAt(Index index) { return *lines_.at(keyAt(index)); }
    [[nodiscard]] const ColumnKey& keyAt(Index index) const {
        return shown_[static_cast<std::size_t>(index)];
    }

    BrowserStore& store_;
    LineBox rows_{get_vadjustment()};
    ColumnInput input_;
    std::unordered_map<ColumnKey, std::unique_ptr<ColumnLine>> lines_;
    std::vector<ColumnKey> shown_;      ///< the lines that stand in `rows_`, in their order
    std::optional<ColumnKey> tabStop_;  ///< where the Tab key stops
    std::optional<ColumnKey> active_;   ///< the line that is drawn as the one in front
    std::optional<ColumnKey> opened_;   ///< the newest tab that opened behind, until it is shown
    Narrow narrow_ = Narrow::no;
    FrameRefresh reveal_;
};

}  // namespace orvu
