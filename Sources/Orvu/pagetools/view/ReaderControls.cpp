#include "pagetools/view/ReaderControls.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"

#include <utility>

namespace orvu {

ReaderControls::ReaderControls(ReaderLook& look, std::function<void()> close)
    : look_(look), close_(std::move(close)) {
    add_css_class("reader-bar");
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::END);
    controls_.add_css_class("reader-controls");
    controls_.set_visible(false);
    addSizeButton(smaller_, phrase("Smaller text"), "reader-smaller");
    addSizeButton(larger_, phrase("Larger text"), "reader-larger");
    smaller_.signal_clicked().connect([this] { look_.smaller(); });
    larger_.signal_clicked().connect([this] { look_.larger(); });
    addThemeButtons();
    append(controls_);
    addOpener();
    addExit();
    refresh();
}

void ReaderControls::addSizeButton(Gtk::Button& button, const std::string& name,
                                   const std::string& style) {
    button.add_css_class(style);
    setAccessibleLabel(button, name);
    button.set_tooltip_text(name);
    controls_.append(button);
}

void ReaderControls::addThemeButtons() {
    for (const ReaderThemeFacts& facts : readerThemes) {
        Gtk::Button& button = themes_.at(static_cast<std::size_t>(facts.theme));
        const std::string name{facts.rawValue};
        button.add_css_class("reader-swatch");
        button.add_css_class("reader-swatch-" + name);
        button.set_valign(Gtk::Align::CENTER);
        setAccessibleLabel(button, facts.label);
        button.signal_clicked().connect([this, theme = facts.theme] { look_.setTheme(theme); });
        controls_.append(button);
    }
}

void ReaderControls::addOpener() {
    opener_.add_css_class("reader-opener");
    setAccessibleLabel(opener_, phrase("Text size and theme"));
    setAccessibleExpanded(opener_, false);
    opener_.set_tooltip_text(phrase("Text size and theme").c_str());
    opener_.signal_clicked().connect(sigc::mem_fun(*this, &ReaderControls::toggleControls));
    append(opener_);
}

void ReaderControls::addExit() {
    exit_.add_css_class("reader-exit");
    exitContent_.add_css_class("reader-exit-content");
    setSymbol(book_, "book.closed", 12);
    exitContent_.append(book_);
    exitContent_.append(exitLabel_);
    exit_.set_child(exitContent_);
    setAccessibleLabel(exit_, exitLabel_.get_text());
    exit_.signal_clicked().connect([this] { close_(); });
    append(exit_);
}

void ReaderControls::toggleControls() {
    const bool shown = !controls_.get_visible();
    controls_.set_visible(shown);
    setAccessibleExpanded(opener_, shown);
}

void ReaderControls::refresh() {
    for (const ReaderThemeFacts& facts : readerThemes) {
        Gtk::Button& button = themes_.at(static_cast<std::size_t>(facts.theme));
        const bool used = facts.theme == look_.theme();
        setCssClass(button, "used", used);
        setAccessibleSelected(button, used);
    }
}

}  // namespace orvu
