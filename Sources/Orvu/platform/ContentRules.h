#pragma once

#include "foundation/async/Future.h"

#include <memory>
#include <string>

namespace orvu {

/// Rules by which the engine blocks what pages ask for, compiled.
class ContentRuleList {
public:
    virtual ~ContentRuleList() = default;
};

/// Where the pages of one configuration take their rules from.
class UserContentController {
public:
    virtual ~UserContentController() = default;

    /// The rules hold for open pages too, from their next request on. A list that is there already
    /// is not added again.
    virtual void add(const ContentRuleList& rules) = 0;
};

/// Turns rules in their written form into what the engine works with.
class ContentRuleListStore {
public:
    using Compiled = std::shared_ptr<const ContentRuleList>;

    virtual ~ContentRuleListStore() = default;

    /// Compiles off the main thread. Null if the rules are no good or have no place on the disk.
    /// A list of the same identifier from before is replaced.
    [[nodiscard]] virtual Future<Compiled> compile(std::string identifier,
                                                   std::string encodedRules) = 0;
};

}  // namespace orvu
