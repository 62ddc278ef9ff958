#include "UpdateLab.h"

#include <archive.h>
#include <archive_entry.h>
#include <gtest/gtest.h>
#include <sodium.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <memory>

namespace orvu {
namespace {

using Path = std::filesystem::path;

struct KeyPair {
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey{};
};

KeyPair keyPair(char seed) {
    std::array<unsigned char, crypto_sign_SEEDBYTES> bytes{};
    bytes.fill(static_cast<unsigned char>(seed));
    KeyPair pair;
    EXPECT_GE(sodium_init(), 0);
    crypto_sign_seed_keypair(pair.publicKey.data(), pair.secretKey.data(), bytes.data());
    return pair;
}

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

std::string hexadecimal(const unsigned char* bytes, std::size_t size) {
    std::string digits(2 * size + 1, '\0');
    sodium_bin2hex(digits.data(), digits.size(), bytes, size);
    digits.pop_back();
    return digits;
}

/// In memory where that can be: the suites that kill processes make some thousand labs.
std::string placeOfLabs() {
    const char* const memory = "/dev/shm";
    return access(memory, W_OK) == 0 ? memory : testing::TempDir();
}

std::string contentOf(const Path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

mode_t typeOf(LabMember::Kind kind) {
    switch (kind) {
        case LabMember::Kind::folder:
            return AE_IFDIR;
        case LabMember::Kind::symlink:
            return AE_IFLNK;
        case LabMember::Kind::device:
            return AE_IFCHR;
        case LabMember::Kind::pipe:
            return AE_IFIFO;
        default:
            return AE_IFREG;
    }
}

void addMember(archive* writer, const LabMember& member) {
    const std::unique_ptr<archive_entry, void (*)(archive_entry*)> entry{archive_entry_new(),
                                                                         archive_entry_free};
    archive_entry* const header = entry.get();
    const bool isFile = member.kind == LabMember::Kind::file;
    archive_entry_set_pathname(header, member.path.c_str());
    archive_entry_set_filetype(header, typeOf(member.kind));
    archive_entry_set_perm(header, member.mode);
    archive_entry_set_size(header, isFile ? static_cast<la_int64_t>(member.content.size()) : 0);
    if (member.kind == LabMember::Kind::symlink) {
        archive_entry_set_symlink(header, member.content.c_str());
    }
    if (member.kind == LabMember::Kind::hardlink) {
        archive_entry_set_hardlink(header, member.content.c_str());
    }
    if (member.isSparse) archive_entry_sparse_add_entry(header, 0, 1);
    ASSERT_EQ(archive_write_header(writer, header), ARCHIVE_OK) << archive_error_string(writer);
    if (isFile) archive_write_data(writer, member.content.data(), member.content.size());
}

la_ssize_t appendBytes(archive*, void* text, const void* bytes, std::size_t size) {
    static_cast<std::string*>(text)->append(static_cast<const char*>(bytes), size);
    return static_cast<la_ssize_t>(size);
}

std::string describe(const std::filesystem::directory_entry& entry, const Path& top) {
    const auto status = entry.symlink_status();
    std::string line = entry.path().lexically_relative(top).native() + ' ' +
                       std::to_string(static_cast<int>(status.type())) + ' ' +
                       std::to_string(static_cast<unsigned>(status.permissions()));
    if (entry.is_symlink()) return line + " -> " + read_symlink(entry.path()).native();
    if (entry.is_regular_file()) line += ' ' + UpdateLab::hash(contentOf(entry.path()));
    return line;
}

}  // namespace

LabMember& LabUpdate::member(std::string_view path) {
    return *std::ranges::find(members, "Orvu.app/" + std::string{path}, &LabMember::path);
}

SignedText::File& LabUpdate::listed(std::string_view path) {
    return *std::ranges::find(text.files, path, &SignedText::File::path);
}

UpdateLab::UpdateLab() {
    std::string name = placeOfLabs() + "/orvu update XXXXXX";
    folder_ = mkdtemp(name.data());
    placeCopy(10, "Orvu.app");
}

UpdateLab::~UpdateLab() { std::filesystem::remove_all(folder_); }

std::vector<LabMember> UpdateLab::members(int build) {
    const std::string number = std::to_string(build);
    const ApplicationFacts facts{"1." + number, build, "app.orvu.Orvu"};
    const auto folder = LabMember::Kind::folder;
    return {
        {"Orvu.app", "", folder, 0755},
        {"Orvu.app/bin", "", folder, 0755},
        {"Orvu.app/bin/orvu", "#!/bin/sh\necho build " + number + " \"$@\"\n", {}, 0755},
        {"Orvu.app/release", facts.string()},
        {"Orvu.app/share", "", folder, 0755},
        {"Orvu.app/share/icons", "", folder, 0755},
        {"Orvu.app/share/icons/a.svg", std::string(5000, static_cast<char>('a' + build % 20))},
        {"Orvu.app/share/licence", "Licence of " + number + "\n"},
    };
}

LabUpdate UpdateLab::update(int build) {
    LabUpdate update{.members = members(build)};
    update.text.identity = "app.orvu.Orvu";
    update.text.version = "1." + std::to_string(build);
    update.text.build = build;
    for (const LabMember& each : update.members) {
        if (each.kind != LabMember::Kind::file) continue;
        update.text.files.push_back(
            {each.path.substr(9), each.mode == 0755, each.content.size(), hash(each.content)});
    }
    return update;
}

void UpdateLab::seal(LabUpdate& update) {
    pack(update);
    describeArchive(update);
    sign(update);
    writeManifest(update);
}

void UpdateLab::pack(LabUpdate& update) {
    update.archive.clear();
    const std::unique_ptr<archive, int (*)(archive*)> writer{archive_write_new(),
                                                             archive_write_free};
    archive_write_set_format_pax_restricted(writer.get());
    archive_write_set_options(writer.get(), "hdrcharset=BINARY");
    archive_write_add_filter_gzip(writer.get());
    archive_write_open(writer.get(), &update.archive, nullptr, appendBytes, nullptr);
    for (const LabMember& each : update.members) addMember(writer.get(), each);
    archive_write_close(writer.get());
}

void UpdateLab::describeArchive(LabUpdate& update) {
    update.text.archiveSize = update.archive.size();
    update.text.archiveHash = hash(update.archive);
}

void UpdateLab::sign(LabUpdate& update, char seed) {
    const std::string text = update.text.string();
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr, bytesOf(text), text.size(),
                         keyPair(seed).secretKey.data());
    const std::string digits = hexadecimal(signature.data(), signature.size());
    update.message = SignedMessage{text, digits}.string();
}

void UpdateLab::writeManifest(LabUpdate& update) {
    update.manifest = R"({"version":")" + update.text.version + R"(","build":)" +
                      std::to_string(update.text.build) + R"(,"url":")" + archiveAddress +
                      R"(","sha256":")" + hash(update.archive) + "\"}";
}

std::string UpdateLab::publicKey(char seed) {
    const auto pair = keyPair(seed);
    return hexadecimal(pair.publicKey.data(), pair.publicKey.size());
}

std::string UpdateLab::hash(std::string_view bytes) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> digest{};
    crypto_hash_sha256(digest.data(), bytesOf(bytes), bytes.size());
    return hexadecimal(digest.data(), digest.size());
}

void UpdateLab::placeCopy(int build, const char* name) const {
    for (const LabMember& each : members(build)) {
        const Path place = folder_ / (name + each.path.substr(8));
        if (each.kind == LabMember::Kind::folder) {
            std::filesystem::create_directory(place);
            chmod(place.c_str(), 0755);
        } else {
            writeLabFile(place, each.content, each.mode);
        }
    }
}

void UpdateLab::placeStaged(int build) const {
    auto staged = update(build);
    seal(staged);
    placeCopy(build, ".Orvu-update.app");
    writeLabFile(folder_ / ".Orvu-update.signed", staged.message, 0600);
}

std::string UpdateLab::snapshot(const Path& folder) {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
        const auto name = entry.path().filename();
        const bool isLock = name == ".Orvu-update.lock" || name == ".Orvu-update.running";
        if (!isLock) lines.push_back(describe(entry, folder));
    }
    std::ranges::sort(lines);
    std::string all;
    for (const auto& line : lines) all += line + '\n';
    return all;
}

std::string UpdateLab::wholeCopy(int build) {
    const UpdateLab other;
    other.placeCopy(build, "copy");
    return snapshot(other.folder() / "copy");
}

void writeLabFile(const Path& file, std::string_view content, unsigned mode) {
    std::ofstream{file, std::ios::binary} << content;
    chmod(file.c_str(), mode);
}

}  // namespace orvu
