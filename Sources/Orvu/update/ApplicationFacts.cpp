#include "update/ApplicationFacts.h"

#include "update/PlainPath.h"

#include <algorithm>

namespace orvu {
namespace {

void readLine(std::string_view line, ApplicationFacts& facts) {
    const auto blank = line.find(' ');
    if (blank == std::string_view::npos) return;
    const auto name = line.substr(0, blank);
    const auto value = line.substr(blank + 1);
    if (name == "version") facts.version = value;
    if (name == "build") facts.build = std::max(0LL, plainNumber(value));
    if (name == "identity") facts.identity = value;
}

}  // namespace

ApplicationFacts ApplicationFacts::parse(std::string_view text) {
    ApplicationFacts facts;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        readLine(text.substr(0, end), facts);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return facts;
}

std::string ApplicationFacts::string() const {
    return "version " + version + "\nbuild " + std::to_string(build) + "\nidentity " + identity +
           "\n";
}

}  // namespace orvu
