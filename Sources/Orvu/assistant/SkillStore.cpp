#include "assistant/SkillStore.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "platform/StoredRecords.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

KestoSkill builtInSkill(std::string name, std::string instruction) {
    return {Uuid::random(), std::move(name), std::move(instruction), true};
}

/// With a hyphen for each blank and line end, so that the name is one word.
std::string hyphenated(std::string_view name) {
    std::string result;
    for (const std::string_view each : characters(name)) {
        const bool isBlank = trimmed(each, TrimSet::whitespacesAndNewlines).empty();
        result += isBlank ? "-" : each;
    }
    return result;
}

bool isCalled(const std::vector<KestoSkill>& skills, std::string_view name) {
    return std::ranges::find(skills, name, &KestoSkill::name) != skills.end();
}

}  // namespace

std::optional<KestoSkill> KestoSkill::decode(const JsonValue& value) {
    const auto id = value.field("id");
    const auto name = value.field("name");
    const auto instruction = value.field("instruction");
    const auto builtIn = value.field("builtIn");
    if (!id || !name || !instruction || !builtIn) return std::nullopt;
    const auto idValue = id->uuid();
    const auto nameText = name->text();
    const auto instructionText = instruction->text();
    const auto builtInFlag = builtIn->boolean();
    if (!idValue || !nameText || !instructionText || !builtInFlag) return std::nullopt;
    return KestoSkill{*idValue, std::string{*nameText}, std::string{*instructionText},
                      *builtInFlag};
}

void KestoSkill::encode(JsonWriter& writer) const {
    writer.beginObject()
        .key("id")
        .value(id)
        .key("name")
        .value(name)
        .key("instruction")
        .value(instruction)
        .key("builtIn")
        .value(builtIn)
        .endObject();
}

SkillStore::SkillStore(UserDefaults& defaults)
    : defaults_(defaults),
      custom_(readRecords<KestoSkill>(defaults_, key).value_or(std::vector<KestoSkill>{})) {}

const std::vector<KestoSkill>& SkillStore::builtIn() {
    static const std::vector<KestoSkill> skills{
        builtInSkill("sum", phrase("Sum up the page in three short lines.")),
        builtInSkill("compare",
                     phrase("Compare these pages: what they share, how they differ, and which fits "
                            "best.")),
        builtInSkill("todo", phrase("Turn the page into a short to-do list.")),
        builtInSkill("explain", phrase("Explain the page simply, as if to a friend.")),
        builtInSkill("translate", phrase("Translate the main points of the page into English."))};
    return skills;
}

std::vector<KestoSkill> SkillStore::matching(std::string_view query) const {
    const std::string searched = lowercased(query);
    const auto matches = [&](const KestoSkill& skill) {
        return beginsWithCharacters(lowercased(skill.name), searched);
    };
    std::vector<KestoSkill> found;
    std::ranges::copy_if(builtIn(), std::back_inserter(found), matches);
    std::ranges::copy_if(custom_, std::back_inserter(found), matches);
    return found;
}

std::optional<KestoSkill> SkillStore::add(std::string_view name, std::string_view instruction) {
    std::string word = hyphenated(replacingAll(lowercased(name), "/", ""));
    const auto text = trimmed(instruction, TrimSet::whitespacesAndNewlines);
    if (word.empty() || text.empty()) return std::nullopt;
    if (isCalled(builtIn(), word) || isCalled(custom_, word)) return std::nullopt;
    KestoSkill skill{Uuid::random(), std::move(word),
                     std::string{firstCharacters(text, instructionLimit)}, false};
    custom_.push_back(skill);
    saveAndEmit();
    return skill;
}

void SkillStore::remove(const KestoSkill& skill) {
    const Uuid id = skill.id;  // the argument may stand in the list
    std::erase_if(custom_, [&](const KestoSkill& each) { return each.id == id; });
    saveAndEmit();
}

void SkillStore::saveAndEmit() {
    writeRecords(defaults_, key, custom_);
    changed_.emit();
}

}  // namespace orvu
