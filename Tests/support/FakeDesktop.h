#pragma once

#include "fakes/FakeBackgroundWork.h"
#include "fakes/FakeDownloadFolder.h"
#include "fakes/FakeFileIO.h"
#include "fakes/FakeHttpSession.h"
#include "fakes/FakeImageCodec.h"
#include "fakes/FakeLanguageModel.h"
#include "fakes/FakePageReads.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeRuleListStore.h"
#include "fakes/FakeSystemSound.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWebEngine.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/VirtualMainLoop.h"
#include "platform/Platform.h"

namespace orvu {

/// A desktop in memory: the whole seam on fakes, with a clock that stands still.
struct FakeDesktop {
    FakeUserDefaults defaults;
    VirtualMainLoop loop;
    Activity activity;
    FakeWebEngine engine;
    FakeRuleListStore ruleLists;
    FakeHttpSession iconRequests;
    FakeHttpSession suggestionRequests;
    FakePageReads pageReads;
    FakeBackgroundWork background;
    FakeImageCodec images;
    FakeLanguageModel model;
    FakeFileIO files;
    FakeDownloadFolder downloadFolder;
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    FakeSystemSound sound;
    SystemPaths paths;  ///< below the working folder, which `files` has in memory
    Locale locale{Locale::Environment{.lang = "en_GB.UTF-8"}};
    Calendar calendar{"UTC"};

    /// The fakes, with `stored` in the place of their own user defaults.
    [[nodiscard]] Platform platform(UserDefaults& stored) {
        return {.defaults = stored,
                .loop = loop,
                .activity = activity,
                .engine = engine,
                .ruleLists = ruleLists,
                .iconRequests = iconRequests,
                .suggestionRequests = suggestionRequests,
                .pageReads = pageReads,
                .background = background,
                .images = images,
                .model = model,
                .files = files,
                .downloadFolder = downloadFolder,
                .workspace = workspace,
                .pasteboard = pasteboard,
                .sound = sound,
                .paths = paths,
                .locale = locale,
                .calendar = calendar};
    }
    [[nodiscard]] Platform platform() { return platform(defaults); }
};

}  // namespace orvu
