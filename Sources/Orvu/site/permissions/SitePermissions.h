#pragma once

#include "foundation/Signal.h"
#include "platform/MediaCapture.h"
#include "platform/UserDefaults.h"
#include "profiles/SettingsKeys.h"
#include "site/Persistence.h"

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orvu {

/// What each site may do with the camera and the microphone, for all profiles and windows. Hosts
/// are taken as they are given: "a.example" and "www.a.example" are two sites.
///
/// What is chosen in private windows counts there alone, until the program ends or somebody
/// chooses anew elsewhere, and is never written.
class SitePermissions {
public:
    enum class Choice { ask, allow, block };
    using Kind = CaptureKind;
    using Choices = std::map<std::string, Choice, std::less<>>;

    static constexpr std::string_view key = SettingsKeys::orvuSitePermissions.name;
    static constexpr std::array allChoices{Choice::ask, Choice::allow, Choice::block};
    static constexpr std::array allKinds{Kind::camera, Kind::microphone};

    /// How a choice, or a kind, is written.
    [[nodiscard]] static std::string_view name(Choice choice);
    [[nodiscard]] static std::string_view name(Kind kind);
    /// What a choice about a host is kept under, such as "a.example|camera".
    [[nodiscard]] static std::string choiceKey(Kind kind, std::string_view host);
    /// Reads a stored map; empty if it is no such map, or if one entry is no choice.
    [[nodiscard]] static Choices decode(std::string_view text);

    /// Reads the stored choices. `defaults` must outlive this.
    explicit SitePermissions(UserDefaults& defaults);
    SitePermissions(const SitePermissions&) = delete;
    SitePermissions& operator=(const SitePermissions&) = delete;

    /// All choices but those of private windows.
    [[nodiscard]] const Choices& choices() const { return choices_; }
    /// `Choice::ask` where nothing was chosen.
    [[nodiscard]] Choice choice(Kind kind, std::string_view host, Persistence persistence) const;
    /// What becomes of a request: denied if one of its kinds is blocked, granted if all are
    /// allowed.
    [[nodiscard]] PermissionDecision decision(MediaCaptureType type, std::string_view host,
                                              Persistence persistence) const;

    /// Changes the choice and saves all of them. Saved is even what asks again: an entry stays.
    void set(Choice choice, Kind kind, std::string_view host, Persistence persistence);

    /// Calls `slot` after each choice that is another one than before.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void save();

    UserDefaults& defaults_;
    Choices choices_;
    Choices ephemeral_;  ///< of private windows, before those in `choices_`
    sigc::signal<void()> changed_;
};

}  // namespace orvu
