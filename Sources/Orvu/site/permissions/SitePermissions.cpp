#include "site/permissions/SitePermissions.h"

#include "foundation/json/Json.h"

#include <algorithm>
#include <optional>

namespace orvu {
namespace {

using Choice = SitePermissions::Choice;

std::optional<Choice> choiceNamed(std::string_view name) {
    const auto found = std::ranges::find(SitePermissions::allChoices, name, [](Choice choice) {
        return SitePermissions::name(choice);
    });
    if (found == SitePermissions::allChoices.end()) return std::nullopt;
    return *found;
}

}  // namespace

std::string_view SitePermissions::name(Choice choice) {
    switch (choice) {
        case Choice::ask:
            return "ask";
        case Choice::allow:
            return "allow";
        case Choice::block:
            break;
    }
    return "block";
}

std::string_view SitePermissions::name(Kind kind) {
    return kind == Kind::camera ? "camera" : "microphone";
}

std::string SitePermissions::choiceKey(Kind kind, std::string_view host) {
    return std::string{host}.append("|").append(name(kind));
}

SitePermissions::Choices SitePermissions::decode(std::string_view text) {
    const auto document = JsonDocument::parse(text);
    if (!document) return {};
    const auto fields = document->root().fields();
    if (!fields) return {};
    Choices choices;
    for (const auto& [entry, value] : *fields) {
        const auto choice = value.text().and_then(choiceNamed);
        if (!choice) return {};
        choices.insert_or_assign(std::string{entry}, *choice);
    }
    return choices;
}

SitePermissions::SitePermissions(UserDefaults& defaults) : defaults_(defaults) {
    if (const auto stored = defaults_.data(key)) choices_ = decode(*stored);
}

SitePermissions::Choice SitePermissions::choice(Kind kind, std::string_view host,
                                                Persistence persistence) const {
    const std::string entry = choiceKey(kind, host);
    if (persistence == Persistence::ephemeral) {
        if (const auto found = ephemeral_.find(entry); found != ephemeral_.end()) {
            return found->second;
        }
    }
    const auto found = choices_.find(entry);
    return found != choices_.end() ? found->second : Choice::ask;
}

PermissionDecision SitePermissions::decision(MediaCaptureType type, std::string_view host,
                                             Persistence persistence) const {
    const auto kinds = captureKinds(type);
    const auto is = [&](Choice choice) {
        return [this, host, persistence, choice](Kind kind) {
            return this->choice(kind, host, persistence) == choice;
        };
    };
    if (std::ranges::any_of(kinds, is(Choice::block))) return PermissionDecision::deny;
    if (std::ranges::all_of(kinds, is(Choice::allow))) return PermissionDecision::grant;
    return PermissionDecision::prompt;
}

void SitePermissions::set(Choice choice, Kind kind, std::string_view host,
                          Persistence persistence) {
    const std::string changing = choiceKey(kind, host);
    const auto inPrivateWindows = this->choice(kind, host, Persistence::ephemeral);
    const auto elsewhere = this->choice(kind, host, Persistence::persistent);
    if (persistence == Persistence::ephemeral) {
        ephemeral_.insert_or_assign(changing, choice);
    } else {
        ephemeral_.erase(changing);
        choices_.insert_or_assign(changing, choice);
        save();
    }
    if (inPrivateWindows == this->choice(kind, host, Persistence::ephemeral) &&
        elsewhere == this->choice(kind, host, Persistence::persistent)) {
        return;
    }
    changed_.emit();
}

void SitePermissions::save() {
    JsonWriter writer;
    writer.beginObject();
    for (const auto& [entry, choice] : choices_) writer.key(entry).value(name(choice));
    writer.endObject();
    if (const auto text = std::move(writer).finish()) defaults_.setData(key, *text);
}

}  // namespace orvu
