#pragma once

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/window.h>
#include <sigc++/sigc++.h>

#include <cstddef>
#include <cstdint>
#include <deque>

namespace orvu {

/// Keeps keys that a page gives back from whatever has the keyboard by then.
///
/// A page is asked about each key first, and what it doesn't take comes to the window a second time.
/// It answers when it likes, so the person may be in the notch or in another tab already: there the
/// key would write into a text or do what was meant for the page. It is dropped instead. What was
/// pressed after the key that moved the keyboard is meant for the new place, and goes on to it.
class ReturnedKeys : public sigc::trackable {
public:
    /// Watches the keys of `window`, which must outlive this.
    explicit ReturnedKeys(Gtk::Window& window);

private:
    struct Sent {
        Glib::RefPtr<const Gdk::Event> press;
        std::uint64_t number;
        GtkWidget* page;  ///< for comparing only
    };

    [[nodiscard]] bool pressed();
    [[nodiscard]] bool cameBack(const Sent& sent);
    void focusMoved();

    /// Pages don't tell which keys they took, so the oldest make room.
    static constexpr std::size_t most = 1024;

    Gtk::Window& window_;
    const Glib::RefPtr<Gtk::EventControllerKey> keys_ = Gtk::EventControllerKey::create();
    std::deque<Sent> sent_;
    std::uint64_t pressed_ = 0;  ///< how many there were
    std::uint64_t latest_ = 0;   ///< the number of the one that is, or was last, dealt with
    std::uint64_t moved_ = 0;    ///< the keyboard has moved since this one was pressed
};

}  // namespace orvu
