#include "notch/AddressNotchBody.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {

AddressNotchBody::AddressNotchBody(AddressNotch& notch, std::shared_ptr<BrowserStore> store,
                                   std::shared_ptr<BrowserTab> tab, NotchSnapshot& snapshot,
                                   AppServices& services, std::unique_ptr<Suggestions> suggestions)
    : notch_(notch),
      store_(std::move(store)),
      tab_(std::move(tab)),
      snapshot_(snapshot),
      services_(services),
      suggestions_(std::move(suggestions)),
      candidates_(NotchSnapshot{}, {}) {
    notch_.connectChanged(sigc::mem_fun(*this, &AddressNotchBody::notchChanged));
    suggestions_->connectChanged(changed_.make_slot());
    catchUp();
}

std::string AddressNotchBody::ghost() const {
    return caretAtEnd_ ? candidates_.ghost() : std::string{};
}

void AddressNotchBody::setCaretAtEnd(bool atEnd) {
    if (std::exchange(caretAtEnd_, atEnd) != atEnd) changed_.emit();
}

bool AddressNotchBody::press(NotchKey key) {
    switch (key) {
        case NotchKey::enter:
            submit(entries());
            return true;
        case NotchKey::commandEnter:
            ask();
            return true;
        case NotchKey::escape:
            notch_.close();
            return true;
        case NotchKey::tab:
        case NotchKey::rightArrow:
            return complete();
        case NotchKey::downArrow:
            select(std::min(selection_ + 1, static_cast<int>(entries().size()) - 1));
            return true;
        case NotchKey::upArrow:
            select(std::max(selection_ - 1, noSelection));
            return true;
    }
    return false;
}

void AddressNotchBody::submit(const std::vector<Entry>& entries) {
    const auto index = static_cast<std::size_t>(selection_);
    if (selection_ >= 0 && index < entries.size()) {
        choose(entries[index]);
    } else {
        goPrimary();
    }
}

void AddressNotchBody::goPrimary() { perform(candidates_.primaryAction()); }

void AddressNotchBody::perform(const NotchAction& action) {
    const NotchAction chosen = action;  // what happens may change the list that it stands in
    if (const auto* const searched = std::get_if<SearchFor>(&chosen)) {
        search(searched->text);
    } else if (const auto* const loaded = std::get_if<LoadAddress>(&chosen)) {
        load(loaded->url);
    } else if (const auto* const switched = std::get_if<SwitchToTab>(&chosen)) {
        if (const auto tab = store_->tab(switched->id)) store_->select(*tab);
        notch_.close();
    }
}

void AddressNotchBody::ask() { notch_.ask(); }

void AddressNotchBody::useCorrection() {
    if (correction_) notch_.setQuery(candidates_.queryWithCorrection(*correction_));
}

void AddressNotchBody::search(const std::string& text) {
    if (trimmed(text, TrimSet::whitespaces).empty()) return;
    store_->open(text, BrowserStore::NewTab::no);
    notch_.close();
}

void AddressNotchBody::load(const Url& url) {
    if (const auto front = store_->active()) front->webView().load(url);
    store_->setLibrarySection(std::nullopt);
    notch_.close();
}

bool AddressNotchBody::complete() {
    const std::string completion = ghost();
    if (completion.empty()) return false;
    notch_.setQuery(query() + completion);
    return true;
}

void AddressNotchBody::select(int selection) {
    if (std::exchange(selection_, selection) != selection) changed_.emit();
}

void AddressNotchBody::notchChanged() {
    catchUp();
    changed_.emit();
}

bool AddressNotchBody::catchUp() {
    const bool opened = notch_.isOpen() && !wasOpen_;
    wasOpen_ = notch_.isOpen();
    if (opened) {
        isEdited_ = false;
        selection_ = noSelection;
        snapshot_.take(*store_, tab_.get());
        compute();
        return true;
    }
    if (!wasOpen_ || query_ == query()) return false;
    edited();
    return true;
}

void AddressNotchBody::edited() {
    isEdited_ = true;
    selection_ = noSelection;
    suggestions_->update(query(), store_->isPrivate() ? Suggestions::Privacy::privateWindow
                                                      : Suggestions::Privacy::ordinary);
    compute();
}

void AddressNotchBody::refresh() {
    if (catchUp() || !notch_.isOpen()) return;
    const auto index = static_cast<std::size_t>(std::max(selection_, 0));
    const std::string chosen =
        selection_ >= 0 && index < entries().size() ? entries()[index].id : "";
    snapshot_.take(*store_, tab_.get());
    compute();
    keepSelection(chosen);
}

void AddressNotchBody::keepSelection(const std::string& id) {
    if (selection_ == noSelection) return;
    const auto found = std::ranges::find(entries(), id, &Entry::id);
    selection_ =
        found == entries().end() ? noSelection : static_cast<int>(found - entries().begin());
}

void AddressNotchBody::compute() {
    query_ = query();
    // Before the first edit the text is not the user's, and answers are those to another one.
    const auto predictions = isEdited_ ? suggestions_->predictions() : std::vector<std::string>{};
    const Platform& platform = services_.platform();
    const Settings& settings = services_.settings();
    candidates_ = NotchCandidates{snapshot_,
                                  {.query = query_,
                                   .predictions = predictions,
                                   .engine = settings.searchEngine.get(),
                                   .suggestionsOn = settings.searchSuggestions.get(),
                                   .isPrivate = store_->isPrivate(),
                                   .shortTime = [&platform](Date date) {
                                       return platform.locale.shortTime(date, platform.calendar);
                                   }}};
    const auto& bang = candidates_.bang();
    correction_ = isEdited_ ? suggestions_->correction(bang ? bang->query : query_) : std::nullopt;
    if (correction_ && correction_->empty()) correction_.reset();
}

}  // namespace orvu
