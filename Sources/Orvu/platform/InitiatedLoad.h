#pragma once

#include "platform/Navigation.h"

#include <optional>
#include <string>
#include <utility>

namespace orvu {

/// A load in the name of a page, and how far it came.
///
/// No call of the engine's names an initiator: whatever the program loads counts as the person's
/// own wish, and takes along the cookies that a site keeps for those. What a document leads to is
/// sent in that document's name, though. So the view first shows a document of one line, which
/// stands at the page's address and leads on at once. It has no script, takes no entry in the list
/// of pages, and is nobody else's concern: this tells which of the engine's events are its own.
class InitiatedLoad {
public:
    /// Nothing where the program may load `target` itself: nothing of the web is sent, or it is
    /// the page's own address, which the page may ask for with all cookies.
    [[nodiscard]] static std::optional<InitiatedLoad> of(const Url& target,
                                                         const Initiator& initiator);

    [[nodiscard]] const Initiator& initiator() const { return initiator_; }
    [[nodiscard]] const Url& target() const { return target_; }
    /// The document that leads on, in HTML.
    [[nodiscard]] const std::string& document() const { return document_; }
    /// Where it stands; nothing for an address without a site, which is nobody's.
    [[nodiscard]] const std::optional<Url>& place() const { return initiator_.referrer; }

    // What the engine tells, in the order in which it comes.

    /// Whose navigation the engine asks about.
    enum class Navigation {
        ownDocument,  ///< goes on; nobody is asked
        target,       ///< to be decided like any other
        stray,        ///< of a load that was given up; doesn't go on
    };
    [[nodiscard]] Navigation navigates() const;
    /// The target's navigation goes on: the engine is about to start its load.
    void allowed();
    /// A load started. Whether it is that of the target.
    [[nodiscard]] bool started();
    /// A document stands. Whether it is the target's, with which this load is over.
    [[nodiscard]] bool committed();
    /// A load failed.
    void failed();
    /// It was stopped or refused.
    void giveUp() { stage_ = Stage::givenUp; }
    [[nodiscard]] bool isGivenUp() const { return stage_ == Stage::givenUp; }

    /// Whether this is under way, given what the engine says of itself: between the two loads it
    /// has nothing to do. One that was stopped before it began it takes for loading for ever.
    [[nodiscard]] bool isLoading(bool engineLoads) const {
        return isAhead() || (engineLoads && !isGivenUp());
    }
    /// Whether the target's load has yet to start.
    [[nodiscard]] bool isAhead() const {
        return stage_ == Stage::asked || stage_ == Stage::leading || startsAnyMoment();
    }
    /// Whether the engine was let go on to the target and has yet to do so. Nothing keeps it from
    /// it then, no other load and no stop: these have to wait for the start.
    [[nodiscard]] bool startsAnyMoment() const { return stage_ == Stage::allowed; }

private:
    enum class Stage {
        asked,     ///< the document was given to the engine
        leading,   ///< it stands
        allowed,   ///< the engine asked whether to go on to the target, and may
        underWay,  ///< the target is being loaded
        givenUp,   ///< the document stands, and leads nowhere any more
    };

    InitiatedLoad(Url target, std::string document, Initiator initiator)
        : target_(std::move(target)),
          document_(std::move(document)),
          initiator_(std::move(initiator)) {}

    Url target_;
    std::string document_;
    Initiator initiator_;
    Stage stage_ = Stage::asked;
};

}  // namespace orvu
