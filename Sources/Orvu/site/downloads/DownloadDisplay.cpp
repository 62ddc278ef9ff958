#include "site/downloads/DownloadDisplay.h"

#include "foundation/text/Translation.h"

#include <algorithm>

namespace orvu {

double DownloadDisplay::ringFraction(const DownloadItem& item) {
    return std::clamp(item.fraction(), minFraction, 1.0);
}

std::string DownloadDisplay::status(DownloadItem::State state) {
    switch (state) {
        case DownloadItem::State::running:
            return "";
        case DownloadItem::State::done:
            return phrase("Done");
        case DownloadItem::State::failed:
            return phrase("Couldn't finish");
        case DownloadItem::State::cancelled:
            return phrase("Cancelled");
    }
    return "";
}

std::string DownloadDisplay::spoken(const DownloadItem& item) {
    std::string state = status(item.state());
    if (state.empty()) {
        state = std::to_string(static_cast<int>(std::clamp(item.fraction(), 0.0, 1.0) * 100));
        state += " %";
    }
    return item.name() + ", " + state;
}

}  // namespace orvu
