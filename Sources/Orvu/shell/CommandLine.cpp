#include "shell/CommandLine.h"

#include "core/AddressResolution.h"
#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"

#include <system_error>

namespace orvu {
namespace {

/// The file's address, each byte outside the plain ones escaped.
std::optional<Url> fileUrl(const std::filesystem::path& file) {
    std::string text = percentEncoded(file.string(), QueryCharacters::bangQuery);
    return Url::parse("file://" + text);
}

bool isBlank(std::string_view argument) {
    return trimmed(argument, TrimSet::whitespacesAndNewlines).empty();
}

std::optional<Url> urlOf(std::string_view argument, const std::filesystem::path& workingFolder,
                         const Settings& settings) {
    const auto text = trimmed(argument, TrimSet::whitespacesAndNewlines);
    if (text.empty()) return std::nullopt;
    auto url = Url::parse(text);
    const auto scheme = url ? url->scheme() : "";
    if (!scheme.empty() && text.substr(scheme.size()).starts_with("://")) return url;
    std::error_code error;
    const auto file = (workingFolder / std::filesystem::path{argument}).lexically_normal();
    if (std::filesystem::exists(file, error) && !error) return fileUrl(file);
    return resolveAddress(text, settings);
}

}  // namespace

CommandLine CommandLine::parse(std::span<const std::string> arguments) {
    CommandLine result;
    bool takesOptions = true;
    for (const std::string& argument : arguments) {
        if (!takesOptions || !argument.starts_with('-')) {
            if (!isBlank(argument)) result.addresses.push_back(argument);
        } else if (argument == "--") {
            takesOptions = false;
        } else if (argument == "--help" || argument == "-h") {
            result.wantsHelp = true;
        } else if (argument == "--version") {
            result.wantsVersion = true;
        } else if (!argument.starts_with("--gapplication-")) {
            result.unknownOptions.push_back(argument);
        }
    }
    return result;
}

std::string CommandLine::help() {
    return phrase(
        "Usage: orvu [OPTION] [ADDRESS...]\n"
        "Opens the addresses, files or searches in Orvu, a small web browser.\n"
        "\n"
        "  -h, --help   print this and end\n"
        "  --version    print the version and end\n"
        "  --           what follows is no option\n");
}

std::string CommandLine::refusal(std::string_view argument) {
    constexpr std::size_t shownLimit = 200;  // characters
    return tr("Orvu can't open “{1}”.", oneLine(argument, shownLimit)) + "\n";
}

std::optional<Url> urlFromArgument(std::string_view argument,
                                   const std::filesystem::path& workingFolder,
                                   const Settings& settings, Start start) {
    auto url = urlOf(argument, workingFolder, settings);
    if (!url || isWebUrl(*url)) return url;
    if (start == Start::again) return std::nullopt;
    const bool isBlankPage = lowercased(url->absoluteString()) == "about:blank";
    return isBlankPage || lowercased(url->scheme()) == "file" ? url : std::nullopt;
}

}  // namespace orvu
