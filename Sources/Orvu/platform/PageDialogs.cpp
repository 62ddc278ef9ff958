#include "platform/PageDialogs.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;

constexpr std::size_t byteLimit = 4 * PageDialogs::textLimit;
constexpr std::string_view ellipsis = "…";

/// The toolkit takes seconds to find lines in a word of thousands of characters.
constexpr std::size_t wordLimit = 60;  // code points

/// `text` with an end of the line wherever a word goes on beyond `wordLimit`.
std::string withShortWords(std::string_view text) {
    std::string shown;
    std::size_t length = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t begin = at;
        const int codePoint = nextCodePoint(text, at);
        const bool isBlank = codePoint == ' ' || codePoint == '\n' || codePoint == '\t';
        if (isBlank) {
            length = 0;
        } else if (length++ == wordLimit) {
            shown.push_back('\n');
            length = 1;
        }
        shown.append(text.substr(begin, at - begin));
    }
    return shown;
}

/// Whether a character may stand in a dialog as it is.
bool isShown(int codePoint) {
    const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F);
    const bool isTurn = (codePoint >= 0x202A && codePoint <= 0x202E) ||
                        (codePoint >= 0x2066 && codePoint <= 0x2069) || codePoint == 0x200E ||
                        codePoint == 0x200F || codePoint == 0x061C;
    return codePoint == '\t' || (!isControl && !isTurn);
}

bool isLineEnd(int codePoint) {
    return codePoint == '\n' || codePoint == 0x85 || codePoint == 0x2028 || codePoint == 0x2029;
}

}  // namespace

PageDialogs::~PageDialogs() {
    for (auto& each : std::exchange(waiting_, {})) each.answer({});
}

PageDialogs::Id PageDialogs::ask(PageDialog dialog, Date now, Answer answer) {
    if (isRefused(dialog)) {
        answer({});
        return 0;
    }
    dialog.text = withShortWords(presentable(dialog.text));
    dialog.suggestion = presentable(dialog.suggestion);
    const bool offersSilence = noteTime(dialog.host, now);
    // What the person is about to do comes before what servers ask beside it.
    const bool comesFirst = dialog.kind == Kind::beforeUnload;
    const auto place = comesFirst ? waiting_.begin() : waiting_.end();
    const Id id = ++last_;
    const bool isInFront = comesFirst || waiting_.empty();
    waiting_.insert(place, {{id, std::move(dialog), offersSilence}, std::move(answer)});
    if (isInFront) changed_.emit();
    return id;
}

void PageDialogs::withdraw(Id id) {
    const bool wasInFront = current() && current()->id == id;
    static_cast<void>(take([&](const Shown& shown) { return shown.id == id; }));
    if (wasInFront) changed_.emit();
}

void PageDialogs::answer(Id id, const PageDialogAnswer& answer) {
    const auto found =
        std::ranges::find(waiting_, id, [](const Waiting& each) { return each.shown.id; });
    if (found == waiting_.end()) return;
    const PageDialog dialog = found->shown.dialog;
    end(
        [&](const Shown& shown) {
            const bool isSameSpace = dialog.kind == Kind::authentication &&
                                     shown.dialog.kind == Kind::authentication &&
                                     shown.dialog.space == dialog.space;
            return shown.id == id || isSameSpace;
        },
        answer);
}

void PageDialogs::silence() {
    isSilenced_ = true;
    cancelAll();
}

void PageDialogs::setLeaving(bool leaving) {
    isLeaving_ = leaving;
    if (!leaving) return;
    end([](const Shown& shown) { return shown.dialog.kind != Kind::beforeUnload; }, {});
}

void PageDialogs::cancelAll() {
    end([](const Shown&) { return true; }, {});
}

void PageDialogs::documentGone() {
    isSilenced_ = false;
    cancelAll();
}

bool PageDialogs::isRefused(const PageDialog& dialog) const {
    const bool isFull = waiting_.size() >= waitingLimit;
    if (dialog.startedByPerson) return isFull;
    return isFull || isSilenced_ || (isLeaving_ && dialog.kind != Kind::beforeUnload);
}

bool PageDialogs::noteTime(const std::string& host, Date now) {
    if (std::exchange(host_, host) != host) times_.clear();
    const double seconds = std::chrono::duration<double>{offerWithin}.count();
    std::erase_if(times_, [&](const Date& each) { return now.secondsSince(each) > seconds; });
    times_.push_back(now);
    if (times_.size() > offeredAt) times_.pop_front();
    return times_.size() == offeredAt;
}

std::vector<PageDialogs::Waiting> PageDialogs::take(const auto& condition) {
    std::vector<Waiting> taken;
    std::deque<Waiting> rest;
    for (auto& each : waiting_) {
        if (condition(each.shown)) {
            taken.push_back(std::move(each));
        } else {
            rest.push_back(std::move(each));
        }
    }
    waiting_ = std::move(rest);
    return taken;
}

void PageDialogs::end(const auto& condition, const PageDialogAnswer& answer) {
    const Id front = current() ? current()->id : 0;
    const PageDialogAnswer given = answer;  // the argument may be a part of what ends
    auto ended = take(condition);
    const Id next = current() ? current()->id : 0;
    if (front != next) changed_.emit();
    for (auto& each : ended) each.answer(given);
}

std::string PageDialogs::presentable(std::string_view text) {
    const std::string clean = wellFormed(wholeCodePoints(text, byteLimit));
    const std::string_view kept = firstCharacters(clean, textLimit);
    std::string shown;
    std::size_t lines = 1;
    std::size_t at = 0;
    while (at < kept.size()) {
        const std::size_t begin = at;
        int codePoint = nextCodePoint(kept, at);
        if (codePoint == '\r') {
            if (kept.substr(at).starts_with('\n')) continue;
            codePoint = '\n';
        }
        if (isLineEnd(codePoint)) {
            if (lines++ == lineLimit) return shown.append(ellipsis);
            shown.push_back('\n');
        } else if (isShown(codePoint)) {
            shown.append(kept.substr(begin, at - begin));
        }
    }
    const bool isCut = text.size() > byteLimit || kept.size() < clean.size();
    return isCut ? shown.append(ellipsis) : shown;
}

}  // namespace orvu
