#pragma once

#include "foundation/async/FutureScope.h"
#include "platform/FileIO.h"
#include "platform/LanguageModel.h"
#include "platform/linux/Worker.h"
#include "platform/linux/model/ModelFinder.h"
#include "platform/linux/model/ModelProcess.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// A language model whose file lies on this computer, run in a process that is shut in. What files
/// there are is found out only when somebody asks, beside the main thread; what each of them is, is
/// read once and remembered.
class FileModel : public LanguageModel {
public:
    struct Options {
        ModelPlaces places;
        std::filesystem::path folder;  ///< for the person's models, made with the first look
        std::filesystem::path memory;  ///< the file in which is remembered what each file is
        EngineOptions engine = {};
        std::function<std::uint64_t()> freeMemory = orvu::freeMemory;  ///< for any thread
    };

    /// `loop` and `files` must outlive this.
    FileModel(MainLoop& loop, FileIO& files, Options options);

    [[nodiscard]] std::optional<UnavailableReason> unavailableReason() const override;
    [[nodiscard]] std::string modelName() const override;
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) override;
    void look() override;
    sigc::connection connectChanged(const sigc::slot<void()>& slot) override {
        return changed_.connect(slot);
    }

    /// Whether a look has ended.
    [[nodiscard]] bool isKnown() const { return isKnown_; }
    /// Whether a look has ended, and nobody looks anew.
    [[nodiscard]] bool isSettled() const { return isKnown_ && !isLooking_; }
    /// Whether a process has a model loaded, or loads it.
    [[nodiscard]] bool isRunning() const { return process_ && process_->isRunning(); }
    /// Comes at the end of the look under way, or of one that begins now.
    [[nodiscard]] Future<bool> lookEnd();

private:
    /// What lies on the disk, and the room for it.
    struct Disk {
        bool hasEngine = false;
        std::vector<ModelFile> files;
        std::uint64_t freeMemory = 0;
    };

    [[nodiscard]] Future<Disk> readDisk();
    [[nodiscard]] Task<void> find();
    [[nodiscard]] Task<void> recall();
    [[nodiscard]] Task<KnownModel> described(ModelFile file);
    [[nodiscard]] Task<ModelResponse> answerTo(std::string prompt, std::string instructions);
    [[nodiscard]] ModelProcess& processFor(const std::filesystem::path& file);
    void choose(std::uint64_t freeMemory);
    void noteUse(const ModelFile& file);
    void remember();

    MainLoop& loop_;
    FileIO& files_;
    const Options options_;
    Worker finding_;
    bool hasRecalled_ = false;
    bool isKnown_ = false;
    bool isLooking_ = false;
    bool hasEngine_ = false;  ///< this was built with a program that runs models
    std::vector<KnownModel> models_;
    std::optional<KnownModel> chosen_;
    std::optional<ModelFailure> hindrance_;  ///< why no model can be run at all
    std::unique_ptr<ModelProcess> process_;  ///< of the model that answered last
    std::vector<Promise<bool>> waiting_;     ///< for the end of the look
    sigc::signal<void()> changed_;
    FutureScope answers_;
    TaskScope look_;
};

}  // namespace orvu
