#pragma once

#include "look/DotFace.h"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace orvu {

class WindowTicker;

/// The assistant's face. It lives while it is mapped in a window that can be seen; where
/// animations are switched off it stands still with open eyes.
class DotFaceView : public Gtk::Widget {
public:
    using Clock = std::function<Date()>;

    /// `dot` is the diameter of a dot, `gap` the space between two, both in pixels.
    DotFaceView(double dot, double gap, Clock clock = &Date::now);
    ~DotFaceView() override;

    void setMood(Mood mood);
    /// Moves the gaze by columns, to the left if negative.
    void setLookX(int columns);
    /// Plays the coming in of the face anew from this date on; none shows it at once.
    void setRevealFrom(std::optional<Date> date);
    void setReaction(std::optional<MoodReaction> reaction);
    /// Whether it lives. Where it doesn't it stands still, and costs nothing while nobody looks.
    void setAlive(bool alive);

protected:
    void on_map() override;
    void on_unmap() override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    [[nodiscard]] DotFaceModel::Cells cells() const;
    void awaitEndOfReaction();
    void followTicker();

    double dot_;
    double gap_;
    Clock clock_;
    Mood mood_ = Mood::idle;
    int lookX_ = 0;
    std::optional<Date> revealFrom_;
    std::optional<MoodReaction> reaction_;
    bool alive_ = true;
    std::shared_ptr<WindowTicker> ticker_;  ///< while mapped and alive
    sigc::connection reactionEnd_;
};

}  // namespace orvu
