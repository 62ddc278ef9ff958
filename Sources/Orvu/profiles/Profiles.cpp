#include "profiles/Profiles.h"

#include "foundation/text/Translation.h"
#include "platform/StoredRecords.h"
#include "profiles/ProfileLook.h"

#include <algorithm>

namespace orvu {

const Uuid Profile::personalID = *Uuid::parse("00000000-0000-0000-0000-00000000F00D");

Profile Profile::personal() { return {personalID, phrase("Personal"), "person.fill", 10}; }

std::optional<Profile> Profile::decode(const JsonValue& value) {
    const auto id = value.field("id").and_then(&JsonValue::uuid);
    const auto name = value.field("name").and_then(&JsonValue::text);
    const auto icon = value.field("icon").and_then(&JsonValue::text);
    const auto color = value.field("color").and_then(&JsonValue::integer);
    if (!id || !name || !icon || !color) return std::nullopt;
    return Profile{*id, std::string{*name}, std::string{*icon}, *color};
}

void Profile::encode(JsonWriter& writer) const {
    writer.beginObject().key("id").value(id).key("name").value(name);
    writer.key("icon").value(icon).key("color").value(color).endObject();
}

std::string scopedKey(std::string_view base, const Profile& profile) {
    std::string key{base};
    if (profile.id != Profile::personalID) key.append(".").append(profile.id.string());
    return key;
}

ProfileStore::ProfileStore(UserDefaults& defaults, RemoveWebsiteData removeWebsiteData)
    : defaults_(defaults),
      removeWebsiteData_(std::move(removeWebsiteData)),
      profiles_(readRecords<Profile>(defaults_, key).value_or(std::vector<Profile>{})) {
    if (profiles_.empty()) profiles_.push_back(Profile::personal());
}

Profile ProfileStore::profile(const std::optional<Uuid>& id) const {
    const auto found = std::ranges::find(profiles_, id, &Profile::id);
    return found != profiles_.end() ? *found : personal();
}

Profile ProfileStore::personal() const {
    const auto found = std::ranges::find(profiles_, Profile::personalID, &Profile::id);
    return found != profiles_.end() ? *found : profiles_.front();
}

Profile ProfileStore::newProfile() const {
    // 7 and 12 have no common factor, so the colours go round before one comes again.
    const auto color = profiles_.size() * 7 % ProfileLook::all.size();
    return {Uuid::random(), "", "briefcase.fill", static_cast<std::int64_t>(color)};
}

void ProfileStore::add(const Profile& profile) {
    const auto found = std::ranges::find(profiles_, profile.id, &Profile::id);
    if (found != profiles_.end()) return;
    profiles_.push_back(profile);
    save();
    changed_.emit();
}

void ProfileStore::update(const Profile& profile) {
    const auto found = std::ranges::find(profiles_, profile.id, &Profile::id);
    if (found == profiles_.end()) return;
    *found = profile;
    save();
    changed_.emit();
}

void ProfileStore::remove(const Profile& profile) {
    if (profile.id == Profile::personalID) return;
    const Profile removed = profile;  // the argument may stand in the list
    std::erase_if(profiles_, [&](const Profile& each) { return each.id == removed.id; });
    if (profiles_.empty()) profiles_.push_back(Profile::personal());
    removed_.push_back(removed.id);
    {
        const UserDefaults::Batch batch{defaults_};
        save();
        for (const auto& setting : settingKeys) {
            if (setting.scope != SettingScope::profile) continue;
            defaults_.remove(scopedKey(setting.name, removed));
        }
    }
    removeWebsiteData_(removed.id);
    changed_.emit();
}

bool ProfileStore::wasRemoved(const Uuid& id) const {
    return std::ranges::find(removed_, id) != removed_.end();
}

sigc::connection ProfileStore::connectChanged(const sigc::slot<void()>& slot) {
    return changed_.connect(slot);
}

void ProfileStore::save() { writeRecords(defaults_, key, profiles_); }

}  // namespace orvu
