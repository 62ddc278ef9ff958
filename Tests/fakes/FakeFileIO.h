#pragma once

#include "platform/FileIO.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// A disk in memory. Reads end at once, or when a test says so.
class FakeFileIO : public FileIO {
public:
    [[nodiscard]] Future<std::optional<std::string>> read(std::filesystem::path file,
                                                          std::size_t limit) override {
        reads.push_back(file.string());
        const Promise<std::optional<std::string>> promise;
        const auto found = contents.find(file.string());
        std::optional<std::string> content;
        if (found != contents.end() && found->second.size() <= limit) content = found->second;
        if (held) {
            waiting_.emplace_back(promise, content);
        } else {
            promise.resolve(content);
        }
        return promise.future();
    }
    void write(std::filesystem::path file, std::string bytes) override {
        writes.push_back(file.string());
        if (!full) contents[file.string()] = std::move(bytes);
    }
    void makeFolder(std::filesystem::path folder) override { folders.push_back(folder.string()); }

    /// Ends the reads that wait, and lets later ones end at once.
    void release() {
        held = false;
        for (const auto& [promise, content] : std::exchange(waiting_, {})) promise.resolve(content);
    }

    std::map<std::string, std::string> contents;
    std::vector<std::string> reads;    ///< the path of each read, in order
    std::vector<std::string> writes;   ///< the path of each write, in order
    std::vector<std::string> folders;  ///< those made
    bool held = false;                 ///< reads wait for `release`
    bool full = false;                 ///< writes have no effect

private:
    std::vector<std::pair<Promise<std::optional<std::string>>, std::optional<std::string>>>
        waiting_;
};

}  // namespace orvu
