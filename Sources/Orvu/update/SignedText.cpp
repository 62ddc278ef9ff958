#include "update/SignedText.h"

#include "update/PlainPath.h"

#include <algorithm>
#include <map>

namespace orvu {
namespace {

constexpr std::size_t hashDigits = 64;
constexpr std::size_t signatureDigits = 128;
constexpr std::size_t longestWord = 100;  // bytes
constexpr std::string_view signatureMark = "signature ";

/// Takes a text apart from its head. What fails makes all further answers empty.
class Cursor {
public:
    explicit Cursor(std::string_view rest) : rest_(rest) {}

    /// What stands before the next `end`, which goes too.
    std::string_view until(char end) {
        const auto found = rest_.find(end);
        if (found == std::string_view::npos) return fail();
        const auto head = rest_.substr(0, found);
        rest_.remove_prefix(found + 1);
        return head;
    }
    /// What stands behind `name` and a space on this line.
    std::string_view line(std::string_view name) {
        return until(' ') == name ? until('\n') : fail();
    }
    [[nodiscard]] bool isAtEnd() const { return rest_.empty() && !failed_; }

private:
    std::string_view fail() {
        failed_ = true;
        rest_ = {};
        return {};
    }

    std::string_view rest_;
    bool failed_ = false;
};

bool isWord(std::string_view text) {
    return !text.empty() && text.size() <= longestWord &&
           std::ranges::all_of(text, [](char c) { return c > ' ' && c <= '~'; });
}

std::uint64_t size(std::string_view text) {
    const auto number = plainNumber(text);
    return number < 0 ? UINT64_MAX : static_cast<std::uint64_t>(number);
}

SignedText::File fileIn(Cursor& cursor) {
    SignedText::File file;
    file.isExecutable = cursor.until(' ') == "755";  // anything else is written as another text
    file.size = size(cursor.until(' '));
    file.hash = cursor.until(' ');
    file.path = cursor.until('\n');
    return file;
}

bool isAllowed(const SignedText::File& file) {
    return isPlainPath(file.path) && isHexadecimal(file.hash, hashDigits) &&
           file.size <= SignedText::largestFile;
}

/// Notes how `path` is written; false if it is known in another way, or as another kind.
bool claim(std::map<std::string, std::string>& spellings, std::string_view path,
           std::string_view mark) {
    const std::string spelling = std::string{path}.append(mark);
    return spellings.try_emplace(foldedPath(path), spelling).first->second == spelling;
}

/// Whether all names are the same thing on each file system.
bool areApart(const std::vector<SignedText::File>& files) {
    std::map<std::string, std::string> spellings;
    for (const auto& file : files) {
        if (!claim(spellings, file.path, "")) return false;
        for (auto above = pathAbove(file.path); !above.empty(); above = pathAbove(above)) {
            if (!claim(spellings, above, "/")) return false;
        }
    }
    return true;
}

bool areAllowed(const std::vector<SignedText::File>& files) {
    std::uint64_t bytes = 0;
    for (const auto& file : files) {
        if (!isAllowed(file)) return false;
        bytes += file.size;
    }
    return bytes <= SignedText::mostBytes &&
           std::ranges::adjacent_find(files, std::ranges::greater_equal{},
                                      &SignedText::File::path) == files.end() &&
           areApart(files);
}

bool isAllowed(const SignedText& text) {
    return isWord(text.identity) && isWord(text.version) && text.build > 0 &&
           text.archiveSize <= SignedText::largestArchive &&
           isHexadecimal(text.archiveHash, hashDigits) && areAllowed(text.files);
}

}  // namespace

bool isHexadecimal(std::string_view text, std::size_t digits) {
    return text.size() == digits && std::ranges::all_of(text, [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
           });
}

std::optional<SignedText> SignedText::parse(std::string_view text) {
    if (text.size() > longest) return std::nullopt;
    Cursor cursor{text};
    if (cursor.until('\n') != "orvu-update 1") return std::nullopt;
    SignedText result;
    result.identity = cursor.line("identity");
    result.version = cursor.line("version");
    result.build = plainNumber(cursor.line("build"));
    if (cursor.until(' ') != "archive") return std::nullopt;
    result.archiveSize = size(cursor.until(' '));
    result.archiveHash = cursor.until('\n');
    const auto count = size(cursor.line("files"));
    if (count > mostFiles) return std::nullopt;
    for (std::uint64_t i = 0; i < count && !cursor.isAtEnd(); ++i) {
        result.files.push_back(fileIn(cursor));
    }
    if (!cursor.isAtEnd() || !isAllowed(result) || result.string() != text) return std::nullopt;
    return result;
}

std::string SignedText::string() const {
    std::string text = "orvu-update 1\nidentity " + identity + "\nversion " + version + "\nbuild " +
                       std::to_string(build) + "\narchive " + std::to_string(archiveSize) + ' ' +
                       archiveHash + "\nfiles " + std::to_string(files.size()) + '\n';
    for (const File& each : files) {
        text.append(each.isExecutable ? "755 " : "644 ").append(std::to_string(each.size));
        text.append(" ").append(each.hash).append(" ").append(each.path).append("\n");
    }
    return text;
}

const SignedText::File* SignedText::file(std::string_view path) const {
    const auto found = std::ranges::lower_bound(files, path, {}, &File::path);
    return found != files.end() && found->path == path ? &*found : nullptr;
}

bool SignedText::hasFolder(std::string_view path) const {
    const std::string head = std::string{path} + "/";
    const auto found = std::ranges::lower_bound(files, head, {}, &File::path);
    return found != files.end() && found->path.starts_with(head);
}

std::optional<SignedMessage> SignedMessage::split(std::string_view bytes) {
    constexpr auto lineSize = signatureMark.size() + signatureDigits + 1;
    if (bytes.size() > SignedText::longest + lineSize) return std::nullopt;
    if (bytes.size() <= lineSize || bytes.back() != '\n') return std::nullopt;
    const auto text = bytes.substr(0, bytes.size() - lineSize);
    const auto line = bytes.substr(text.size());
    const auto signature = line.substr(signatureMark.size(), signatureDigits);
    if (text.back() != '\n' || !line.starts_with(signatureMark)) return std::nullopt;
    if (!isHexadecimal(signature, signatureDigits)) return std::nullopt;
    return SignedMessage{text, signature};
}

std::string SignedMessage::string() const {
    return std::string{text}.append(signatureMark).append(signature).append("\n");
}

}  // namespace orvu
