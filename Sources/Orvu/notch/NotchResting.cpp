#include "notch/NotchResting.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Translation.h"
#include "notch/AddressNotch.h"

namespace orvu {

NotchResting NotchResting::of(const BrowserTab& tab) {
    if (tab.isNewTab()) {
        return {"", std::string{AddressNotch::prompt}, phrase("Search or type a site"), ""};
    }
    const std::string& address = tab.url()->absoluteString();
    return {displayHost(siteName(*tab.url())), tab.path(), tr("Address: {1}", address), address};
}

NotchBookmark NotchBookmark::of(bool isBookmarked) {
    if (isBookmarked) {
        return {"star.fill", phrase("Remove bookmark (⌘D)"), phrase("Remove bookmark"), true};
    }
    return {"star", phrase("Bookmark this page (⌘D)"), phrase("Bookmark this page"), false};
}

NotchReader NotchReader::of(bool isReading) {
    if (isReading) return {"book.fill", phrase("Exit Reader (⇧⌘R)"), phrase("Exit Reader"), true};
    return {"book", phrase("Reader (⇧⌘R)"), phrase("Reader"), false};
}

}  // namespace orvu
