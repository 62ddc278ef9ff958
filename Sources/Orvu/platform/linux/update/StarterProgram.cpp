#include "platform/linux/update/CopySwap.h"
#include "platform/linux/update/SwapLauncher.h"

#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int misused = 2;
constexpr int notStarted = 1;

/// Becomes the application, which returns only if that fails.
int start(orvu::UpdateFolder& folder, std::vector<char*> arguments) {
    using orvu::StartedBeside;
    const auto beside = folder.claimRun() ? StartedBeside::nothing : StartedBeside::running;
    orvu::CopySwap swap{folder, orvu::UpdateKey::configured()};
    if (!swap.prepareStart(beside)) return notStarted;
    std::string program =
        folder.path(orvu::UpdateNames::application) / orvu::ApplicationFacts::program;
    arguments.insert(arguments.begin(), program.data());
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    return notStarted;
}

int swap(orvu::UpdateFolder& folder, const std::string& process, const std::string& then) {
    if (then != "again" && then != "only") return misused;
    if (!orvu::SwapLauncher::waitFor(process)) return misused;
    const bool isIn = orvu::CopySwap{folder, orvu::UpdateKey::configured()}.swap();
    if (then == "again") return start(folder, {});
    return isIn ? 0 : notStarted;
}

int explain() {
    std::fputs(
        "orvu-starter --start FOLDER [ADDRESS...]    starts FOLDER/Orvu.app\n"
        "orvu-starter --swap PROCESS again|only FOLDER\n"
        "    waits for a process (fd:N or pid:N), then puts the update in FOLDER into its place\n",
        stderr);
    return misused;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<char*> arguments{argv + 1, argv + argc};
    if (arguments.size() >= 2 && std::string{arguments[0]} == "--start") {
        orvu::UpdateFolder folder{arguments[1]};
        return start(folder, {arguments.begin() + 2, arguments.end()});
    }
    if (arguments.size() == 4 && std::string{arguments[0]} == "--swap") {
        orvu::UpdateFolder folder{arguments[3]};
        return swap(folder, arguments[1], arguments[2]);
    }
    return explain();
}
