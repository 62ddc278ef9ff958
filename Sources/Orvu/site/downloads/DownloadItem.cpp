#include "site/downloads/DownloadItem.h"

#include "site/downloads/DownloadName.h"

#include <algorithm>
#include <utility>

namespace orvu {

DownloadItem::DownloadItem(std::unique_ptr<Download> download, DownloadContext context)
    : context_(std::move(context)), download_(std::move(download)) {
    download_->setDelegate(this);
}

DownloadItem::~DownloadItem() { download_->setDelegate(nullptr); }

void DownloadItem::cancel() {
    if (state_ != State::running) return;
    const auto self = shared_from_this();  // an observer may let go of it
    state_ = State::cancelled;
    download_->cancel();
    changed_.emit();
}

void DownloadItem::showInFinder() const {
    if (file_) context_.workspace.showFile(*file_);
}

std::optional<std::filesystem::path> DownloadItem::decideDestination(
    std::string_view suggestedName) {
    const auto self = shared_from_this();
    if (state_ != State::running) return std::nullopt;
    place_ = context_.folder.makePartialFile();
    if (!place_) return std::nullopt;
    auto written = place_->file();
    wantedName_ = DownloadName::safe(suggestedName);
    chooseName();
    changed_.emit();
    return written;
}

void DownloadItem::progressed() {
    const double fraction = download_->fractionCompleted();
    if (state_ != State::running || fraction == fraction_) return;
    const auto self = shared_from_this();
    fraction_ = fraction;
    changed_.emit();
}

void DownloadItem::didFinish() {
    if (state_ != State::running) return end(state_);
    if (!giveName()) return end(State::failed);
    fraction_ = 1;
    end(State::done);
}

void DownloadItem::didFail() { end(state_ == State::running ? State::failed : state_); }

void DownloadItem::chooseName() {
    const auto folder = context_.folder.path();
    name_ = DownloadName::free(wantedName_, [&](const std::string& name) {
        const auto file = folder / name;
        return context_.folder.exists(file) || context_.isPromised(file) ||
               std::ranges::find(refused_, file) != refused_.end();
    });
    file_ = folder / name_;
}

/// The name was free at the start; meanwhile somebody else may have taken it.
bool DownloadItem::giveName() {
    if (!place_) return false;
    for (;;) {
        const auto move = place_->moveTo(*file_);
        if (move != PartialFile::Move::taken) return move == PartialFile::Move::done;
        refused_.push_back(*file_);
        chooseName();
    }
}

void DownloadItem::end(State state) {
    const auto self = shared_from_this();
    place_.reset();
    if (std::exchange(state_, state) != state) changed_.emit();
}

}  // namespace orvu
