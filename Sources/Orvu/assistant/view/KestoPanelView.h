#pragma once

#include "assistant/KestoPanel.h"
#include "assistant/view/KestoComposerView.h"
#include "assistant/view/KestoConversationView.h"
#include "look/view/DotFaceView.h"
#include "look/view/FrameRefresh.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <optional>

namespace orvu {

/// The assistant's panel: a dark card with the face, the conversation and the field.
class KestoPanelView : public Gtk::Box {
public:
    static constexpr int width = 360;  ///< points
    /// How often a model is looked for while the greeting says that there is none.
    static constexpr std::chrono::seconds lookPause{3};

    /// `panel` must outlive the view.
    explicit KestoPanelView(KestoPanel& panel);
    ~KestoPanelView() override { notify_callbacks(); }

    void focusField() { composer_.focusField(); }

private:
    void addHeader();
    void refresh();
    void lookAgain();

    KestoPanel& panel_;
    Gtk::Box header_;
    DotFaceView face_;
    Gtk::Label title_;
    Gtk::Button close_;
    Gtk::Image cross_;
    KestoConversationView conversation_;
    KestoComposerView composer_;
    std::optional<Scheduled> look_;  ///< until the next one
    FrameRefresh refresh_;
};

}  // namespace orvu
