#pragma once

#include "site/downloads/DownloadItem.h"

#include <string>

namespace orvu {

/// What is shown of a download.
struct DownloadDisplay {
    /// The least that a ring is drawn of, so that a download that begins is seen.
    static constexpr double minFraction = 0.05;

    /// How much of the ring is drawn, from `minFraction` to 1.
    [[nodiscard]] static double ringFraction(const DownloadItem& item);
    /// What a row says under the name of one that ended; empty while it runs.
    [[nodiscard]] static std::string status(DownloadItem::State state);
    /// The row in words: "report.pdf, 40 %".
    [[nodiscard]] static std::string spoken(const DownloadItem& item);
};

}  // namespace orvu
