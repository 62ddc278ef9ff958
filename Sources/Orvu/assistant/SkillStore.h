#pragma once

#include "foundation/json/Json.h"
#include "foundation/Uuid.h"
#include "platform/UserDefaults.h"

#include <sigc++/sigc++.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// An instruction for the assistant that is called by a name.
struct KestoSkill {
    Uuid id;
    std::string name;  ///< the word to type, without the slash
    std::string instruction;
    bool builtIn = false;

    [[nodiscard]] static std::optional<KestoSkill> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const KestoSkill&, const KestoSkill&) = default;
};

/// The skills of the program and those of the person, which all profiles share.
class SkillStore {
public:
    static constexpr std::string_view key = "kestoSkills";
    /// The longest instruction of a person's own, in characters; what is over is cut.
    static constexpr std::size_t instructionLimit = 600;

    /// Reads the person's own; what can't be read counts as none and is kept until the next change.
    /// `defaults` must outlive the store.
    explicit SkillStore(UserDefaults& defaults);
    SkillStore(const SkillStore&) = delete;
    SkillStore& operator=(const SkillStore&) = delete;

    /// The program's own. Their identities are new at each start.
    [[nodiscard]] static const std::vector<KestoSkill>& builtIn();
    /// The person's own, in the order of adding.
    [[nodiscard]] const std::vector<KestoSkill>& custom() const { return custom_; }
    /// Those whose name begins with `query` in any case, the program's own first.
    [[nodiscard]] std::vector<KestoSkill> matching(std::string_view query) const;

    /// Adds a skill under the name in lower case, with hyphens for blanks and without slashes.
    /// Nothing if name or instruction is empty, or if there is a skill of that name.
    std::optional<KestoSkill> add(std::string_view name, std::string_view instruction);
    void remove(const KestoSkill& skill);

    /// Calls `slot` after each change.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void saveAndEmit();

    UserDefaults& defaults_;
    std::vector<KestoSkill> custom_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
