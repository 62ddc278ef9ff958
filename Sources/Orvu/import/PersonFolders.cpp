#include "import/PersonFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace orvu {
namespace {

using Path = std::filesystem::path;

/// An absolute path in the environment; others count as none.
Path variable(const char* name, const Path& otherwise) {
    const char* const value = std::getenv(name);
    return value && Path{value}.is_absolute() ? Path{value} : otherwise;
}

Path homeOfAccount() {
    const passwd* const account = getpwuid(geteuid());
    return account && account->pw_dir ? Path{account->pw_dir} : Path{"/"};
}

}  // namespace

ImportFolders personFolders() {
    const Path home = variable("HOME", homeOfAccount());
    return {.home = home,
            .configuration = variable("XDG_CONFIG_HOME", home / ".config"),
            .data = variable("XDG_DATA_HOME", home / ".local/share")};
}

}  // namespace orvu
