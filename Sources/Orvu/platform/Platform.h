#pragma once

#include "foundation/Calendar.h"
#include "foundation/text/Locale.h"
#include "platform/Activity.h"
#include "platform/BackgroundWork.h"
#include "platform/ContentRules.h"
#include "platform/DownloadFolder.h"
#include "platform/FileIO.h"
#include "platform/HttpSession.h"
#include "platform/ImageCodec.h"
#include "platform/LanguageModel.h"
#include "platform/MainLoop.h"
#include "platform/PageReads.h"
#include "platform/Pasteboard.h"
#include "platform/SystemPaths.h"
#include "platform/SystemSound.h"
#include "platform/UserDefaults.h"
#include "platform/WebConfiguration.h"
#include "platform/Workspace.h"

namespace orvu {

/// What a desktop gives to the program: the whole seam. All of it outlives whoever is handed this.
struct Platform {
    UserDefaults& defaults;
    MainLoop& loop;
    Activity& activity;
    WebEngine& engine;
    ContentRuleListStore& ruleLists;
    HttpSession& iconRequests;
    HttpSession& suggestionRequests;
    PageReads& pageReads;
    BackgroundWork& background;
    ImageCodec& images;
    LanguageModel& model;
    FileIO& files;
    DownloadFolder& downloadFolder;
    Workspace& workspace;
    Pasteboard& pasteboard;
    SystemSound& sound;
    const SystemPaths& paths;
    const Locale& locale;
    const Calendar& calendar;
};

}  // namespace orvu
