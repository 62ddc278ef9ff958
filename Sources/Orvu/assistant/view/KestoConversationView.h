#pragma once

#include "assistant/KestoPanel.h"
#include "assistant/view/BrowserThinkingDots.h"
#include "assistant/view/FlowChips.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

namespace orvu {

/// What is said: the greeting, or the question with what became of it. All of it is plain text.
class KestoConversationView : public Gtk::ScrolledWindow {
public:
    /// `panel` must outlive the view.
    explicit KestoConversationView(KestoPanel& panel);

    void refresh();

private:
    void addGreeting();
    void addReply();
    void refreshGreeting();
    void refreshReply();

    KestoPanel& panel_;
    Gtk::Box lines_;
    // Of the greeting.
    Gtk::Label intro_;
    Gtk::Label missing_;
    Gtk::Box skills_;
    // Of a question.
    Gtk::Label question_;
    BrowserThinkingDots dots_;
    Gtk::Label error_;
    Gtk::Label answer_;
    FlowChips sources_;
};

}  // namespace orvu
