#pragma once

#include "foundation/Url.h"
#include "profiles/Settings.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What the program was started with: `orvu [OPTION] [ADDRESS...]`.
struct CommandLine {
    static constexpr int refusedStatus = 2;  ///< the exit status if something can't be opened

    bool wantsHelp = false;
    bool wantsVersion = false;
    std::vector<std::string>
        addresses;  ///< addresses, files and texts to search for; none is blank
    std::vector<std::string> unknownOptions;  ///< what begins with "-", is not known, and is no
                                              ///< option of the toolkit's own

    /// `arguments` without the program's name. Behind "--" everything is an address.
    [[nodiscard]] static CommandLine parse(std::span<const std::string> arguments);

    /// What `--help` prints.
    [[nodiscard]] static std::string help();
    /// One sentence, with its line end, for an argument that can't be opened. What could do harm
    /// to a terminal is left out of it, and a long argument is cut.
    [[nodiscard]] static std::string refusal(std::string_view argument);
};

/// Whether the program was started, or handed the arguments of another start while it runs: then
/// it opens addresses of the web alone.
enum class Start { first, again };

/// What an argument of the command line opens: an address, an existing file or folder of the
/// working folder, or else what the same text opens in the address bar. Nothing for blank text, and
/// for addresses other than those of the web and, at the first start, files and about:blank.
[[nodiscard]] std::optional<Url> urlFromArgument(std::string_view argument,
                                                 const std::filesystem::path& workingFolder,
                                                 const Settings& settings, Start start);

}  // namespace orvu
