#include "profiles/Settings.h"

namespace orvu {

Settings::Settings(UserDefaults& defaults)
    : searchEngine(defaults, SettingsKeys::searchEngine),
      searchSuggestions(defaults, SettingsKeys::searchSuggestions),
      searchAnswers(defaults, SettingsKeys::searchAnswers),
      searchAnswerOpen(defaults, SettingsKeys::searchAnswerOpen),
      restoreTabs(defaults, SettingsKeys::restoreTabs),
      blockTrackers(defaults, SettingsKeys::blockTrackers),
      kestoReadsPages(defaults, SettingsKeys::kestoReadsPages),
      narrowTabs(defaults, SettingsKeys::narrowTabs),
      autoUpdate(defaults, SettingsKeys::autoUpdate),
      readerSize(defaults, SettingsKeys::readerSize),
      readerTheme(defaults, SettingsKeys::readerTheme),
      onboarded(defaults, SettingsKeys::onboarded),
      launchCount(defaults, SettingsKeys::launchCount),
      lastProfile(defaults, SettingsKeys::lastProfile),
      showWhatsNewFor(defaults, SettingsKeys::showWhatsNewFor),
      orvuWindow(defaults, SettingsKeys::orvuWindow) {}

}  // namespace orvu
