#include "site/Favicons.h"

#include "foundation/text/Text.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace orvu {
namespace {

/// Whether a character is a letter or a number, which its first code point decides.
bool standsInFileNames(std::string_view character) {
    if (character == "." || character == "-") return true;
    std::size_t at = 0;
    const int first = nextCodePoint(character, at);
    return first >= 0 && (u_isUAlphabetic(first) ||
                          u_getIntPropertyValue(first, UCHAR_NUMERIC_TYPE) != U_NT_NONE);
}

}  // namespace

FaviconStore::FaviconStore(HttpSession& http, ImageCodec& codec, FileIO& files,
                           std::filesystem::path folder)
    : http_(http), codec_(codec), files_(files), folder_(std::move(folder)) {
    files_.makeFolder(folder_);
}

// Ends of fetches, here and in tabs, must not begin others now.
FaviconStore::~FaviconStore() { turns_.close(); }

std::string FaviconStore::key(std::string_view host) {
    std::string key = lowercased(host);
    if (key.starts_with("www.")) key.erase(0, 4);
    return key;
}

std::string FaviconStore::fileName(std::string_view key) {
    std::string name;
    while (!key.empty()) {
        const auto character = firstCharacters(key, 1);
        if (standsInFileNames(character)) name += character;
        key.remove_prefix(character.size());
    }
    return name + ".png";
}

std::filesystem::path FaviconStore::file(std::string_view key) const {
    return folder_ / fileName(key);
}

ImagePointer FaviconStore::icon(std::string_view host, Persistence persistence) {
    const std::string key = FaviconStore::key(host);
    if (const auto found = icons_.find(key); found != icons_.end()) {
        Icon& icon = found->second;
        const ImagePointer image = icon.image;
        if (persistence == Persistence::persistent && std::exchange(icon.isUnsaved, false)) {
            tasks_.start(save(key, image));
        }
        return image;
    }
    if (key.empty()) return nullptr;
    if (persistence == Persistence::persistent) asked_.insert(key);
    if (missing_.contains(key)) return nullptr;
    const auto [running, isNew] = loading_.try_emplace(key, persistence);
    if (persistence == Persistence::persistent) running->second = persistence;
    if (isNew) tasks_.start(load(key));
    return nullptr;
}

void FaviconStore::set(const ImagePointer& image, std::string_view host, Persistence persistence) {
    const std::string key = FaviconStore::key(host);
    if (!key.empty() && image) store(key, image, persistence);
}

void FaviconStore::store(const std::string& key, const ImagePointer& image,
                         Persistence persistence) {
    if (persistence == Persistence::persistent) {
        asked_.insert(key);
        tasks_.start(save(key, image));
        return put(key, {image});
    }
    const auto previous = icons_.find(key);
    const bool hasFile = previous != icons_.end() && !previous->second.isUnsaved;
    put(key, {image, !hasFile && !asked_.contains(key)});
}

void FaviconStore::put(const std::string& key, Icon icon) {
    const std::string site = key;  // the argument may go with what an observer ends
    icons_.insert_or_assign(site, std::move(icon));
    missing_.erase(site);
    if (const auto found = watched_.find(site); found != watched_.end()) {
        const auto signal = found->second;  // an observer may have the store forget it
        signal.emit();
    }
    changed_.emit();
}

sigc::connection FaviconStore::connectIcon(std::string_view host, const sigc::slot<void()>& slot) {
    if (watched_.size() >= forgettingSize_) forgetUnwatched();
    return watched_[key(host)].connect(slot);
}

/// Connections end without a word, so now and then the store looks which ones are left: so seldom
/// that this costs nothing.
void FaviconStore::forgetUnwatched() {
    std::erase_if(watched_, [](const auto& each) { return each.second.empty(); });
    forgettingSize_ = std::max(fewWatched, 2 * watched_.size());
}

Task<void> FaviconStore::save(std::string key, ImagePointer image) {
    std::string png = co_await codec_.encodePng(std::move(image));
    if (!png.empty()) files_.write(file(key), std::move(png));
}

Task<void> FaviconStore::load(std::string key) {
    const auto bytes = co_await files_.read(file(key), httpOptions.bodyLimit);
    ImagePointer image;
    if (bytes) image = co_await codec_.decode(*bytes);
    const bool fromDisk = image != nullptr;
    // A page may give the site an icon at any time, and that one stays.
    if (!image && !icons_.contains(key)) image = co_await fetchPath(key, "/apple-touch-icon.png");
    if (!image && !icons_.contains(key)) image = co_await fetchPath(key, "/favicon.ico");

    const Persistence persistence = loading_.at(key);
    loading_.erase(key);
    if (icons_.contains(key)) co_return;
    if (!image) {
        missing_.insert(key);
    } else if (fromDisk) {
        put(key, {image});
    } else {
        store(key, image, persistence);
    }
}

Task<ImagePointer> FaviconStore::fetchPath(std::string key, std::string path) {
    const auto url = Url::parse("https://" + key + path);
    // A host with an escaped slash in it would lead to another site.
    if (!url || url->host() != key) co_return nullptr;
    co_return co_await fetch(*url);
}

Task<ImagePointer> FaviconStore::fetch(Url url) {
    if (!isWebUrl(url) || !url.host()) co_return nullptr;
    // Held until the picture is decoded, so that few bodies wait for the decoder.
    const auto turn = co_await turns_.next(*url.host());
    auto response = co_await http_.get(url, {});
    if (!response || response->status != 200) co_return nullptr;
    if (response->body.empty() || response->body.size() >= httpOptions.bodyLimit) {
        co_return nullptr;
    }
    co_return co_await codec_.decode(std::move(response->body));
}

}  // namespace orvu
