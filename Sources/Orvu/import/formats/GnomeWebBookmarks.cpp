#include "import/formats/GnomeWebBookmarks.h"

#include "import/formats/GvdbFile.h"
#include "import/formats/ImportedPage.h"

namespace orvu {
namespace {

/// The title in a value: the first text, which stands behind the time at which the bookmark was
/// made. The first versions wrote it in front of the tags in one list. Empty if it isn't there.
std::string_view titleIn(const GvdbFile::Value& value) {
    std::size_t begin = 0;
    if (value.type.starts_with("(xs")) {
        begin = 8;
    } else if (value.type != "as") {
        return {};
    }
    if (begin >= value.bytes.size()) return {};
    const auto rest = value.bytes.substr(begin);
    const auto end = rest.find('\0');
    return end == std::string_view::npos ? std::string_view{} : rest.substr(0, end);
}

}  // namespace

std::vector<BookmarkStore::Entry> gnomeWebBookmarks(std::string_view bytes) {
    std::vector<BookmarkStore::Entry> found;
    for (const auto& [address, value] : GvdbFile{bytes}.valuesOf("bookmarks")) {
        auto url = webBookmark(address);
        if (!url) continue;
        const auto written = titleIn(value);
        std::string title = written.empty() ? nameOf(*url) : importedTitle(written);
        found.emplace_back(std::move(*url), std::move(title));
    }
    return found;
}

}  // namespace orvu
