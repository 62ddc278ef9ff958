#include "platform/linux/files/FileMove.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace orvu {
namespace {

using Move = PartialFile::Move;

Move reasonOf(int error) { return error == EEXIST ? Move::taken : Move::failed; }

}  // namespace

FileMove::Result FileMove::byRename(const Path& from, const Path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return Move::done;
    }
    if (errno == EINVAL || errno == ENOSYS) return std::nullopt;
    return reasonOf(errno);
}

FileMove::Result FileMove::byLink(const Path& from, const Path& to) {
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return Move::done;
    }
    if (errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS) return std::nullopt;
    return reasonOf(errno);
}

FileMove::Result FileMove::byHolding(const Path& from, const Path& to) {
    if (access(from.c_str(), F_OK) != 0) return Move::failed;
    const int held = open(to.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (held < 0) return reasonOf(errno);
    close(held);
    if (rename(from.c_str(), to.c_str()) == 0) return Move::done;
    unlink(to.c_str());
    return Move::failed;
}

PartialFile::Move FileMove::move(const Path& from, const Path& to) {
    for (const auto way : {byRename, byLink, byHolding}) {
        if (const auto result = way(from, to)) return *result;
    }
    return Move::failed;
}

}  // namespace orvu
