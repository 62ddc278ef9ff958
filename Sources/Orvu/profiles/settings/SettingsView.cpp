#include "profiles/settings/SettingsView.h"

#include "foundation/text/Translation.h"

#include <optional>
#include <utility>

namespace orvu {

SettingsView::SettingsView(Subjects subjects, SettingsWindow::Actions actions)
    : services_(subjects.services),
      skills_(subjects.skills),
      updater_(subjects.updater),
      import_(subjects.import),
      makeDefault_(std::move(actions.makeDefault)),
      updateStatus_(updater_, std::move(actions.restart)) {
    skills_.connectChanged(sigc::mem_fun(changed_, &sigc::signal<void()>::emit));
}

std::vector<SettingsView::Section> SettingsView::sections() {
    return {general(), updates(), search(), privacy(), kesto(), tabs()};
}

SettingsView::Section SettingsView::general() {
    Settings& settings = services_.settings();
    return {
        phrase("General"),
        {Button{phrase("Default browser"), phrase("Make Orvu Your Default Browser"), makeDefault_},
         Switch{phrase("Reopen your tabs when Orvu starts"), &settings.restoreTabs},
         Button{phrase("Bookmarks and history"), phrase("Import from Another Browser…"),
                [this] { import_.show(std::nullopt); }}}};
}

/// A copy that others keep current has nothing to switch, and one without a server no notes.
SettingsView::Section SettingsView::updates() {
    Section section{phrase("Updates"),
                    {Switch{phrase("Update Orvu automatically"), &services_.settings().autoUpdate,
                            updater_.updatesItself()},
                     Status{&updateStatus_}}};
    if (const auto notes = updater_.whatsNew()) {
        section.rows.emplace_back(Button{"", phrase("What's New"), [this, notes] {
                                             services_.platform().workspace.open(*notes);
                                         }});
    }
    return section;
}

SettingsView::Section SettingsView::search() {
    Settings& settings = services_.settings();
    return {
        phrase("Search"),
        {EnginePicker{phrase("Search engine"), &settings.searchEngine},
         Switch{phrase("Show search suggestions as you type"), &settings.searchSuggestions},
         Caption{phrase("What you type goes to your search engine to suggest searches. Never from "
                        "private windows.")},
         Switch{phrase("Kesto answers beside search results"), &settings.searchAnswers},
         Caption{phrase("Type !w, !yt, !m, !d, !gh or !i before a search to send it somewhere "
                        "else.")}}};
}

SettingsView::Section SettingsView::privacy() {
    Settings& settings = services_.settings();
    Section section{
        phrase("Privacy"),
        {Switch{phrase("Block well-known trackers"), &settings.blockTrackers},
         Caption{phrase("Applies to windows you open after changing it.")},
         Button{"", phrase("Clear History…"), [this] { clearHistory(); }},
         Button{"", phrase("Clear All Website Data…"), [this] { clearWebsiteData(); }}}};
    if (!cleared_.empty()) section.rows.emplace_back(Caption{cleared_});
    return section;
}

SettingsView::Section SettingsView::kesto() {
    Section section{
        "Kesto",
        {Switch{phrase("Let Kesto read pages when you ask"), &services_.settings().kestoReadsPages},
         Caption{phrase("Answers are worked out on this Mac with Apple’s on-device model. "
                        "Private windows never share pages.")}}};
    for (const KestoSkill& each : skills_.custom()) {
        section.rows.emplace_back(
            Skill{"/" + each.name, each.instruction, [this, each] { skills_.remove(each); }});
    }
    if (skills_.custom().empty()) {
        section.rows.emplace_back(Caption{
            phrase("Your skills appear here. Type / in the Kesto panel and choose New skill.")});
    }
    return section;
}

SettingsView::Section SettingsView::tabs() {
    return {phrase("Tabs"),
            {Switch{phrase("Narrow tab column in new windows"), &services_.settings().narrowTabs}}};
}

/// The stores of open windows clear theirs, of whatever profile. What is stored of the personal
/// profile goes also without a window.
void SettingsView::clearHistory() {
    services_.notifications().post(Prefs::clearHistory);
    services_.platform().defaults.remove(SettingsKeys::browserVisits.name);
    tellCleared(phrase("History cleared"));
}

void SettingsView::clearWebsiteData() {
    clearing_.cancel();
    clearing_.start(removeWebsiteData());
}

/// That of the personal profile. Only the end is told, not whether all of it went.
Task<void> SettingsView::removeWebsiteData() {
    auto& engine = services_.platform().engine;
    auto removal = engine.clearDataStore(WebsiteDataStore::defaultDataStore());
    co_await removal;
    tellCleared(phrase("Cookies and website data cleared"));
}

void SettingsView::tellCleared(std::string_view what) {
    cleared_ = what;
    changed_.emit();
}

}  // namespace orvu
