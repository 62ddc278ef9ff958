#include "notch/NotchResting.h"

#include "foundation/text/DisplayHost.h"
#include "notch/AddressNotch.h"

namespace orvu {

NotchResting NotchResting::of(const BrowserTab& tab) {
    if (tab.isNewTab()) {
        return {"", std::string{AddressNotch::prompt}, "Search or type a site", ""};
    }
    const std::string& address = tab.url()->absoluteString();
    return {displayHost(siteName(*tab.url())), tab.path(), "Address: " + address, address};
}

NotchBookmark NotchBookmark::of(bool isBookmarked) {
    if (isBookmarked) {
        return {"star.fill", "Remove bookmark (⌘D)", "Remove bookmark", true};
    }
    return {"star", "Bookmark this page (⌘D)", "Bookmark this page", false};
}

NotchReader NotchReader::of(bool isReading) {
    if (isReading) return {"book.fill", "Exit Reader (⇧⌘R)", "Exit Reader", true};
    return {"book", "Reader (⇧⌘R)", "Reader", false};
}

}  // namespace orvu
