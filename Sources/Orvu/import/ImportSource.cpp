#include "import/ImportSource.h"

namespace orvu {

std::string_view rawValue(BrowserKind kind) {
    switch (kind) {
        case BrowserKind::chromium:
            return "chromium";
        case BrowserKind::firefox:
            return "firefox";
        case BrowserKind::safari:
            return "safari";
        case BrowserKind::gnomeWeb:
            return "gnomeweb";
    }
    return {};
}

std::string_view probeFile(BrowserKind kind) {
    switch (kind) {
        case BrowserKind::chromium:
            return "History";
        case BrowserKind::firefox:
            return "places.sqlite";
        case BrowserKind::safari:
            return "History.db";
        case BrowserKind::gnomeWeb:
            return "ephy-history.db";
    }
    return {};
}

std::vector<std::string_view> profileFiles(BrowserKind kind) {
    switch (kind) {
        case BrowserKind::chromium:
            return {"Bookmarks", "History"};
        case BrowserKind::gnomeWeb:
            return {"bookmarks.gvdb", "ephy-history.db"};
        case BrowserKind::firefox:
        case BrowserKind::safari:
            break;
    }
    return {probeFile(kind)};
}

}  // namespace orvu
