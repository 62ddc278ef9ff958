#pragma once

#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
#include "import/ImportWindow.h"
#include "look/Desk.h"
#include "look/drawing/Paint.h"

#include <sigc++/sigc++.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The three steps of the first run, without a widget: a welcome, an offer to import, and an offer
/// to become the default browser. All texts are those of `platformText`'s source.
class OnboardingView {
public:
    static constexpr Phrase title = phrase("Welcome to Orvu");
    static constexpr int width = 620;   ///< points
    static constexpr int height = 500;  ///< points

    // The steps.
    static constexpr int welcome = 0;
    static constexpr int importer = 1;
    static constexpr int finish = 2;

    /// The texts of a step; empty where it has none.
    struct Texts {
        Phrase heading;
        Phrase line;
        Phrase text;
        Phrase button;
        Phrase caption;
    };
    static constexpr std::array<Texts, 3> texts{{
        {Phrase{"orvu"}, Phrase{},
         phrase("A Mac browser where the address hangs from the top edge, and Kesto answers "
                "questions about the page on your Mac."),
         Phrase{}, Phrase{}},
        {phrase("Bring your web with you"), phrase("Nothing leaves this Mac."),
         phrase("Orvu can bring bookmarks and recent history from Chrome, Arc, Dia, Brave, Edge, "
                "Firefox or Safari."),
         phrase("Choose a Browser…"),
         phrase("You can do this later from File › Import from Another Browser…")},
        {phrase("Make Orvu your browser"), Phrase{},
         phrase("Links from Mail, Messages and other apps will open in Orvu. macOS will ask you to "
                "confirm."),
         phrase("Make Orvu Your Default Browser"), Phrase{}},
    }};
    static constexpr int markFrame = 132;       ///< of the program's mark in the welcome, in points
    static constexpr int nameSize = 60;         ///< of the welcome's heading, in points
    static constexpr int welcomeTextSize = 15;  ///< points
    static constexpr int welcomeTextWidth = 420;  ///< points at most

    static constexpr Phrase backTitle = phrase("Back");

    /// One of the dots that tell how far the person is.
    struct Mark {
        static constexpr int height = 6;                 ///< points
        static constexpr Paint later{Desk::white, 0.2};  ///< of those that are not reached

        int width;       ///< points
        bool isReached;  ///< in the accent colour

        friend constexpr bool operator==(Mark, Mark) = default;
    };

    /// Makes this program the one that opens web addresses, and says what came of it, in the words
    /// of `platformText`'s source; empty for nothing to say.
    using MakeDefault = sigc::slot<std::string()>;

    /// `import` must outlive this. What `makeDefault` says goes into `message`. `done` ends the
    /// first run, and may end this.
    OnboardingView(ImportWindow& import, MakeDefault makeDefault, sigc::slot<void()> done);

    Observable<int> step{welcome};
    /// A line below the button of the last step.
    Observable<std::optional<std::string>> message;

    // What shows.
    [[nodiscard]] const Texts& shown() const;
    /// From the first step to the last.
    [[nodiscard]] std::array<Mark, 3> marks() const;
    [[nodiscard]] bool hasBack() const { return step.get() > welcome; }
    [[nodiscard]] std::string_view mainTitle() const;

    // What is done.
    void back();
    /// The main button: the next step, or the end.
    void advance();
    /// The button of the step that has one: opens the import for the personal profile, or makes
    /// this program the default browser.
    void press();

private:
    ImportWindow& import_;
    const MakeDefault makeDefault_;
    const sigc::slot<void()> done_;
};

}  // namespace orvu
