#pragma once

#include "platform/MediaCapture.h"
#include "site/PageQuestion.h"
#include "site/permissions/SitePermissions.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvu {

/// What a person is asked when a page wants to look or listen and nothing was chosen for its site.
struct CaptureQuestion {
    MediaCaptureType type = MediaCaptureType::camera;
    std::string host;

    /// "“a.example” wants to use your camera" and the like.
    [[nodiscard]] std::string text() const;
    /// What stands beside the text.
    [[nodiscard]] std::string_view symbol() const;

    friend bool operator==(const CaptureQuestion&, const CaptureQuestion&) = default;
};

/// The requests of one page for camera and microphone: they are decided from the permissions of
/// its site, or wait here for the person's answer, one question at a time. No answer outlives the
/// document to which it was given.
class CaptureQuestions {
public:
    /// `permissions` must outlive this. `persistence` says of which windows the choices count.
    CaptureQuestions(const SitePermissions& permissions, Persistence persistence)
        : permissions_(permissions), persistence_(persistence) {}

    /// What is to be asked now.
    [[nodiscard]] std::optional<CaptureQuestion> question() const;
    /// The kinds that were asked for by this document's site and are blocked there.
    [[nodiscard]] std::vector<CaptureKind> blockedKinds() const;

    // Each of these tells whether another question, or none, is to be asked afterwards.
    bool add(MediaCaptureRequest request);
    bool answer(PageAnswer answer);
    /// The person ended what was on. From now on the page has to ask for it, even on a site that
    /// is allowed: it would begin again by itself.
    void captureStopped(ActiveCapture stopped);
    /// Something was chosen for some site.
    bool permissionsChanged();
    /// Everything that waits is denied, and what was answered is forgotten.
    bool documentUnloaded();

private:
    using Requests = std::vector<MediaCaptureRequest>;
    using Kinds = std::set<CaptureKind>;

    bool settle(const auto& change);
    [[nodiscard]] PermissionDecision decision(const MediaCaptureRequest& request) const;
    /// Takes those requests out of the waiting ones.
    [[nodiscard]] Requests take(const auto& condition);

    const SitePermissions& permissions_;
    const Persistence persistence_;
    Requests waiting_;  ///< the first of them is asked about
    Kinds refused_;     ///< by the person, for this document
    Kinds stopped_;     ///< by the person, who allowed none of them again in this document
    int dismissed_ = 0;
    std::optional<std::string> host_;  ///< of the last request
};

}  // namespace orvu
