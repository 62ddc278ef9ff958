#include "profiles/ProfileSwitcher.h"

#include "foundation/text/Translation.h"
#include "look/text/PlatformText.h"
#include "profiles/ProfileLook.h"
#include "profiles/ShownProfileName.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

/// The first profiles have keys of their own.
constexpr std::size_t profilesWithKeys = 9;

/// A profile's name stays as it is, whatever it says of keys and machines.
std::string help(const Profile& profile, std::size_t index) {
    std::string text = tr("Switch to {1}", shownProfileName(profile.name));
    if (index >= profilesWithKeys) return text;
    return text + platformText(" (⌃" + std::to_string(index + 1) + ")");
}

}  // namespace

ProfileSwitcher::ProfileSwitcher(ProfileStore& profiles, const Uuid& shown, SwitchTo switchTo)
    : profiles_(profiles), shown_(shown), switchTo_(std::move(switchTo)) {}

std::vector<ProfileSwitcher::Tile> ProfileSwitcher::tiles() const {
    std::vector<Tile> tiles;
    for (const Profile& each : profiles_.profiles()) {
        tiles.push_back({.id = each.id,
                         .symbol = each.icon,
                         .color = ProfileLook::at(each.color).color,
                         .isShown = each.id == shown_,
                         .help = help(each, tiles.size())});
    }
    return tiles;
}

std::vector<ProfileSwitcher::MenuLine> ProfileSwitcher::menu(const Uuid& id) {
    const auto found = profile(id);
    if (!found) return {};
    const std::string name = shownProfileName(found->name) + "…";
    std::vector<MenuLine> lines{
        {tr("Edit {1}", name), sigc::bind(sigc::mem_fun(*this, &ProfileSwitcher::edit), id)}};
    if (id == Profile::personalID) return lines;
    lines.push_back({tr("Delete {1}", name),
                     sigc::bind(sigc::mem_fun(*this, &ProfileSwitcher::confirmDelete), id)});
    return lines;
}

std::unique_ptr<ProfileEditor> ProfileSwitcher::editor() {
    const auto done = editing.get() ? &ProfileSwitcher::edited : &ProfileSwitcher::created;
    return std::make_unique<ProfileEditor>(profiles_, editing.get(), sigc::mem_fun(*this, done));
}

std::optional<ProfileSwitcher::Question> ProfileSwitcher::question() const {
    if (!deleting.get()) return std::nullopt;
    return Question{.message = tr("Delete “{1}”?", shownProfileName(deleting.get()->name)),
                    .text = Question::informativeText,
                    .buttons = {phrase("Delete"), phrase("Cancel")}};
}

void ProfileSwitcher::switchTo(const Uuid& id) {
    const auto wanted = profile(id);
    if (!wanted || id == shown_) return;
    const auto switchTo = switchTo_;  // the switcher ends in it
    switchTo(*wanted);
}

void ProfileSwitcher::edit(const Uuid& id) {
    if (const auto found = profile(id)) editing.set(found);
}

void ProfileSwitcher::confirmDelete(const Uuid& id) {
    const auto found = profile(id);
    if (found && id != Profile::personalID) deleting.set(found);
}

void ProfileSwitcher::answer(Question::Answer answer) {
    const auto asked = deleting.get();
    deleting.set(std::nullopt);
    if (!asked || answer != Question::Answer::remove || !profile(asked->id)) return;
    ProfileStore& profiles = profiles_;  // the switcher may end in the next line
    if (asked->id == shown_) switchTo(profiles.personal().id);
    profiles.remove(*asked);
}

std::optional<Profile> ProfileSwitcher::profile(const Uuid& id) const {
    const auto& all = profiles_.profiles();
    const auto found = std::ranges::find(all, id, &Profile::id);
    return found != all.end() ? std::optional{*found} : std::nullopt;
}

void ProfileSwitcher::edited(const std::optional<Profile>& /*profile*/) {
    editing.set(std::nullopt);
}

void ProfileSwitcher::created(const std::optional<Profile>& profile) {
    creating.set(false);
    if (profile) switchTo(profile->id);
}

}  // namespace orvu
