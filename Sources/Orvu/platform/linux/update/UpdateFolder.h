#pragma once

#include "platform/linux/files/FileDescriptor.h"
#include "update/ApplicationFacts.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace orvu {

/// What lies beside the application, in the one folder in which updates happen.
struct UpdateNames {
    static constexpr const char* application = "Orvu.app";
    static constexpr const char* staged = ".Orvu-update.app";
    static constexpr const char* signedText = ".Orvu-update.signed";  ///< of the staged copy
    static constexpr const char* previous = ".Orvu-previous.app";
    static constexpr const char* refused = ".Orvu-refused.app";  ///< taken back, to be removed
    static constexpr const char* record = ".Orvu-update.record";
    static constexpr const char* recordDraft = ".Orvu-update.record-draft";
    static constexpr const char* lock = ".Orvu-update.lock";
    static constexpr const char* running = ".Orvu-update.running";  ///< locked while it runs
    /// The variable that tells the program which of its files that lock is.
    static constexpr const char* runVariable = "ORVU_RUN_LOCK";
    static constexpr const char* work = ".Orvu-update.work";  ///< where an archive is unpacked
};

/// The folder that holds the application, and the steps that change what is in it. Each step is
/// whole or not done, but for `remove`.
class UpdateFolder {
public:
    struct Options {
        bool canExchange = true;       ///< whether two folders may be swapped in one step
        std::function<void()> step{};  ///< called before each step
    };

    explicit UpdateFolder(std::filesystem::path path) : UpdateFolder(std::move(path), Options{}) {}
    UpdateFolder(std::filesystem::path path, Options options);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path path(const char* name) const { return path_ / name; }
    /// Whether nobody else can put anything here.
    [[nodiscard]] bool isTrusted() const;
    /// Keeps other processes from changing anything until this is gone. False if that can't be.
    bool lock();
    /// Says that the program that this process becomes is running, until its end. False if another
    /// one is.
    bool claimRun();
    /// What the program does first with the lock of `claimRun`: what it starts doesn't inherit it, and
    /// so doesn't count as a running copy.
    static void keepRunLock();

    [[nodiscard]] bool hasFolder(const char* name) const;
    /// What the copy of this name says of itself.
    [[nodiscard]] ApplicationFacts facts(const char* name) const;
    /// The content of a plain file of this person's; nothing if it has more than `limit` bytes.
    [[nodiscard]] std::optional<std::string> read(const std::string& name, std::size_t limit) const;

    /// Replaces a file; it lasts from then on.
    bool write(const char* name, const char* draft, const std::string& text);
    bool rename(const char* from, const char* to);
    bool exchange(const char* one, const char* other);
    /// Removes a file or a folder with all in it; true if it is gone.
    bool remove(const char* name);

private:
    void step() const;
    void sync() const;
    [[nodiscard]] FileDescriptor openLock(const char* name) const;

    const std::filesystem::path path_;
    const Options options_;
    FileDescriptor folder_;
    FileDescriptor lock_;
    FileDescriptor run_;
};

}  // namespace orvu
