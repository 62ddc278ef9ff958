#include "library/FoldedVisits.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {

FoldedVisits::Texts FoldedVisits::textsOf(const Visit& visit) {
    return {visit.id, FoldedText{visit.title}, lowercased(visit.url.absoluteString())};
}

void FoldedVisits::take(const std::vector<Visit>& visits) {
    std::unordered_map<Uuid, Texts*> known;
    known.reserve(all_.size());
    for (Texts& texts : all_) known.emplace(texts.id, &texts);

    std::vector<Texts> taken;
    taken.reserve(visits.size());
    for (const Visit& visit : visits) {
        const auto found = known.find(visit.id);
        if (found == known.end()) {
            taken.push_back(textsOf(visit));
        } else {
            taken.push_back(std::move(*found->second));
            known.erase(found);  // what is stored may hold an identity twice
        }
        longest_ =
            std::max({longest_, taken.back().title.text().size(), taken.back().address.size()});
    }
    all_ = std::move(taken);
}

std::vector<std::size_t> FoldedVisits::matching(std::string_view query) const {
    std::vector<std::size_t> places;
    if (query.size() / FoldedText::minPart > longest_) return places;
    const std::string inAddress = lowercased(query);
    const FoldedText inTitle = FoldedText::fromLowercased(inAddress);
    for (std::size_t place = 0; place < all_.size(); ++place) {
        const Texts& texts = all_[place];
        if (texts.title.contains(inTitle) || texts.address.contains(inAddress)) {
            places.push_back(place);
        }
    }
    return places;
}

}  // namespace orvu
