#pragma once

#include "shell/pagearea/BrowserSplitPages.h"
#include "shell/pagearea/view/PagePane.h"
#include "shell/pagearea/view/SplitDivider.h"

#include <gtkmm/gesturedrag.h>
#include <gtkmm/widget.h>

#include <vector>

namespace orvu {

/// Two tabs side by side, with a divider between them.
class BrowserSplitPagesView : public Gtk::Widget {
public:
    /// `view` must outlive this.
    explicit BrowserSplitPagesView(BrowserView& view);
    ~BrowserSplitPagesView() override;

    /// Shows a pair of tabs. True if another page stands in one of the panes now.
    bool show(const BrowserStore::TabList& pair);
    /// Gives the keyboard to the pane that shows the active tab.
    void focusContent();
    /// The parts beside the active tab's page that the keyboard can go to now.
    [[nodiscard]] std::vector<Gtk::Widget*> areas();

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void addDrag();
    void dragBegan(double x, double y);
    void dragged(double x, double y);
    [[nodiscard]] PagePane& activePane();
    void fullscreenChanged();

    BrowserView& view_;
    BrowserSplitPages split_;
    PagePane first_;
    SplitDivider divider_;
    PagePane second_;
    const Glib::RefPtr<Gtk::GestureDrag> drag_ = Gtk::GestureDrag::create();
    bool dividerFollows_ = false;  ///< the pointer has gone far enough with it
};

}  // namespace orvu
