#include "profiles/ProfileEditor.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "profiles/ProfileIcons.h"
#include "profiles/ShownProfileName.h"

#include <utility>

namespace orvu {

ProfileEditor::ProfileEditor(ProfileStore& profiles, const std::optional<Profile>& original,
                             Done done)
    : profiles_(profiles),
      isNew_(!original),
      start_(original ? *original : profiles.newProfile()),
      done_(std::move(done)) {
    name.set(start_.name);
    icon.set(start_.icon);
    color.set(start_.color);
    const auto changed = sigc::mem_fun(*this, &ProfileEditor::changed);
    name.connectChanged(changed);
    icon.connectChanged(changed);
    color.connectChanged(changed);
    search.connectChanged(changed);
}

std::string_view ProfileEditor::heading() const {
    return isNew_ ? phrase("New profile") : phrase("Edit profile");
}

std::string ProfileEditor::shownName() const {
    const std::string& typed = name.get();
    if (isBlankProfileName(typed)) return std::string{namelessProfile};
    return std::string{trimmed(typed, TrimSet::whitespacesAndNewlines)};
}

std::string ProfileEditor::previewName() const { return shownProfileName(name.get()); }

std::vector<std::string_view> ProfileEditor::icons() const {
    return ProfileIcons::icons(search.get());
}

std::string ProfileEditor::iconsLabel() const {
    return trn("{1} TO CHOOSE FROM", "{1} TO CHOOSE FROM", icons().size());
}

std::string ProfileEditor::saveTitle() const {
    if (!isNew_) return phrase("Save");
    return isBlankProfileName(name.get()) ? std::string{phrase("Create Profile")}
                                          : tr("Create {1}", previewName());
}

void ProfileEditor::save() {
    if (!done_) return;
    const auto done = *std::exchange(done_, std::nullopt);
    // Whoever hears of what follows may end the editor.
    const std::optional profile = edited();
    if (isNew_) {
        profiles_.add(*profile);
    } else {
        profiles_.update(*profile);
    }
    done(profile);
}

void ProfileEditor::cancel() {
    if (!done_) return;
    const auto done = *std::exchange(done_, std::nullopt);
    done(std::nullopt);
}

Profile ProfileEditor::edited() const { return {start_.id, shownName(), icon.get(), color.get()}; }

}  // namespace orvu
