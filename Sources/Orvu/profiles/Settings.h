#pragma once

#include "profiles/Preferences.h"
#include "profiles/ReaderTheme.h"
#include "profiles/Setting.h"

namespace orvu {

template <>
struct SettingFormat<Prefs::Engine> : RawValueFormat<Prefs::engines, &Prefs::EngineFacts::engine> {
};

template <>
struct SettingFormat<ReaderTheme> : RawValueFormat<readerThemes, &ReaderThemeFacts::theme> {};

/// The settings of the program, of which there is one for all windows: what one of them changes,
/// all others hear of. `SettingsKeys` says what counts where nothing is stored.
class Settings {
public:
    /// `defaults` must outlive this.
    explicit Settings(UserDefaults& defaults);

    Setting<Prefs::Engine> searchEngine;
    Setting<bool> searchSuggestions;
    Setting<bool> searchAnswers;
    Setting<bool> searchAnswerOpen;
    Setting<bool> restoreTabs;
    Setting<bool> blockTrackers;
    Setting<bool> kestoReadsPages;
    Setting<bool> narrowTabs;
    Setting<bool> autoUpdate;    ///< not decided yet unless it is set
    Setting<double> readerSize;  ///< points, maybe outside the limits of `ReaderLook`
    Setting<ReaderTheme> readerTheme;
    Setting<bool> onboarded;
    Setting<std::int64_t> launchCount;  ///< may be negative
    Setting<std::string> lastProfile;   ///< an identifier
    Setting<std::string> showWhatsNewFor;
    Setting<std::string> orvuWindow;  ///< a `WindowFrame`
};

}  // namespace orvu
