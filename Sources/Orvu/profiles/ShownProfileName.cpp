#include "profiles/ShownProfileName.h"

#include "look/text/OneLine.h"

namespace orvu {
namespace {

/// In code points: as many as menus, buttons and questions have room for.
constexpr std::size_t nameLimit = 60;

std::string inOneLine(std::string_view name) { return oneLine(name, name.size()); }

}  // namespace

bool isBlankProfileName(std::string_view name) { return inOneLine(name).empty(); }

std::string shownProfileName(std::string_view name) {
    const std::string whole = inOneLine(name);
    return whole.empty() ? std::string{namelessProfile} : oneLine(whole, nameLimit);
}

}  // namespace orvu
