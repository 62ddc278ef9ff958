#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/column/view/ColumnLine.h"
#include "shell/column/view/TabIcon.h"
#include "shell/siteinfo/view/CaptureDot.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// A tab in the list: icon, title and, where it is wanted, a button that closes it. While its page
/// looks or listens, there is a dot.
class BrowserTabRow : public Gtk::Overlay, public ColumnLine {
public:
    /// `store` must outlive the row.
    BrowserTabRow(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab);

    void setActive(bool active);
    /// Shows once that it has just come.
    void lightUp();
    [[nodiscard]] bool hasTab() const { return !tab_.expired(); }

    [[nodiscard]] Gtk::Widget& widget() override { return *this; }
    [[nodiscard]] bool isTab() const override { return true; }
    void setTabStop(TabStop stop) override;
    void takeFocus() override { select_.grab_focus(); }
    void setNarrow(Narrow narrow) override;
    [[nodiscard]] std::vector<MenuEntry> contextMenu() override;
    void remove() override;

private:
    void select();
    void refresh();

    BrowserStore& store_;
    const std::weak_ptr<BrowserTab> tab_;  // a closed tab must not live on in its row
    Gtk::Button select_;
    Gtk::Box content_;
    TabIcon icon_;
    Gtk::Label title_;
    CaptureDot dot_;
    Gtk::Button close_;
    Gtk::Image cross_;
    std::optional<std::string> shownTitle_;
    FrameRefresh refresh_;
};

}  // namespace orvu
