#include "platform/linux/update/UpdateStaging.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/update/StagedCopy.h"
#include "platform/linux/update/UpdateArchive.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace orvu {
namespace {

using Names = UpdateNames;
using Path = std::filesystem::path;
using Verdict = ArchiveListing::Verdict;

constexpr const char* signedTextDraft = ".Orvu-update.signed-draft";

std::string sentence(std::string_view words) { return std::string{words}; }

bool isOwnPrivateFolder(const Path& path) {
    const FileDescriptor folder{
        open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    struct stat facts{};
    return folder && fstat(folder.get(), &facts) == 0 && facts.st_uid == geteuid() &&
           (facts.st_mode & 07777) == 0700;
}

std::uint64_t sizeOf(const FileDescriptor& file) {
    struct stat facts{};
    return fstat(file.get(), &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

/// Whether the program and what it says of itself are in the list.
bool hasProgram(const SignedText& text) {
    const auto* const program = text.file(ApplicationFacts::program);
    return program && program->isExecutable && text.file(ApplicationFacts::fileName);
}

}  // namespace

Path UpdateStaging::archivePlace() const { return folder_.path(Names::work) / "archive"; }

std::optional<Path> UpdateStaging::prepare() {
    if (!folder_.isTrusted() || !folder_.remove(Names::work)) return std::nullopt;
    const Path work = folder_.path(Names::work);
    if (mkdir(work.c_str(), 0700) != 0 || !isOwnPrivateFolder(work)) return std::nullopt;
    return archivePlace();
}

FileDescriptor UpdateStaging::openArchive() const {
    FileDescriptor file{
        open(archivePlace().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
    struct stat facts{};
    const bool isPlain = file && fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode);
    return isPlain ? std::move(file) : FileDescriptor{};
}

std::string UpdateStaging::digest() const {
    const auto archive = openArchive();
    return archive ? sha256(archive.get()) : std::string{};
}

UpdateInstaller::Staged UpdateStaging::stage(const ExpectedUpdate& expected) {
    std::string failure = checkAndUnpack(expected);
    if (failure.empty() && !putInPlace(expected.signedText)) {
        failure = sentence(update_words::notUnpacked);
    }
    discard();
    if (!failure.empty()) return {.failure = failure};
    return {.path = folder_.path(Names::staged)};
}

std::string UpdateStaging::checkAndUnpack(const ExpectedUpdate& expected) {
    if (!key_) return server_.unsignedCopy();
    const auto text = key_->open(expected.signedText);
    const auto archive = openArchive();
    if (!archive) return sentence(update_words::notUnpacked);
    if (!text || !isExpected(*text, expected, archive)) return sentence(update_words::notSigned);
    return unpack(*text, archive);
}

bool UpdateStaging::isExpected(const SignedText& text, const ExpectedUpdate& expected,
                               const FileDescriptor& archive) const {
    return text.identity == applicationId && text.version == expected.version &&
           text.build == expected.build && text.build > expected.newerThan &&
           text.archiveSize == sizeOf(archive) && text.archiveHash == sha256(archive.get());
}

std::string UpdateStaging::unpack(const SignedText& text, const FileDescriptor& archive) {
    const UpdateArchive content{archive.get()};
    const auto verdict = content.verdict();
    const bool isApplication = verdict != Verdict::noApplication && hasProgram(text);
    if (!isApplication) return sentence(update_words::noApplication);
    if (verdict != Verdict::allowed || !content.unpack(folder_.path(Names::work))) {
        return sentence(update_words::notUnpacked);
    }
    return isWhole(text) ? std::string{} : sentence(update_words::notSigned);
}

bool UpdateStaging::isWhole(const SignedText& text) const {
    const auto copy = std::string{Names::work} + "/" + Names::application;
    const auto facts = folder_.facts(copy.c_str());
    return isCopyOf(folder_.path(copy.c_str()), text) && facts.build == text.build &&
           facts.version == text.version && facts.identity == text.identity;
}

bool UpdateStaging::putInPlace(const std::string& signedText) {
    const auto copy = std::string{Names::work} + "/" + Names::application;
    const FileDescriptor work{
        open(folder_.path(Names::work).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    if (!work || syncfs(work.get()) != 0) return false;
    if (!folder_.remove(Names::staged)) return false;
    if (!folder_.write(Names::signedText, signedTextDraft, signedText)) return false;
    if (folder_.rename(copy.c_str(), Names::staged)) return true;
    folder_.remove(Names::signedText);
    return false;
}

}  // namespace orvu
