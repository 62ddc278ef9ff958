#pragma once

#include "foundation/Date.h"
#include "foundation/Signal.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What a page, or a server that it needs, asks the person.
struct PageDialog {
    enum class Kind {
        alert,
        confirm,
        prompt,
        beforeUnload,    ///< the page may be left only if the person says so
        authentication,  ///< a server wants a name and a password
    };

    Kind kind = Kind::alert;
    std::string host = {};        ///< who asks; empty for a page without a host
    std::string text = {};        ///< the page's words, or what a server calls what it guards
    std::string suggestion = {};  ///< what stands in the field of a prompt at first
    /// Of an authentication: what its answer counts for, also where others wait for the same.
    std::string space = {};
    bool isForProxy = false;
    bool isEncrypted = true;  ///< the password goes over an encrypted connection
    bool isRetry = false;     ///< the previous password was refused
    /// The person set off what leads to this, and must hear of it also from a silenced page.
    bool startedByPerson = false;

    friend bool operator==(const PageDialog&, const PageDialog&) = default;
};

/// What the person says to it.
struct PageDialogAnswer {
    bool isAccepted = false;
    std::string text = {};  ///< of a prompt; the name of an authentication
    std::string password = {};

    friend bool operator==(const PageDialogAnswer&, const PageDialogAnswer&) = default;
};

/// The dialogs of one page, one in front and others that wait behind it. Each is answered once: by
/// the person, or as cancelled when the document goes, when others end it, or with this.
///
/// A page that asks for the third time within ten seconds may be silenced: from then on until its
/// document goes whatever it asks is answered as cancelled at once.
class PageDialogs {
public:
    using Id = std::uint64_t;
    using Answer = std::move_only_function<void(const PageDialogAnswer&)>;

    struct Shown {
        Id id = 0;
        PageDialog dialog;
        bool offersSilence = false;
    };

    static constexpr std::size_t offeredAt = 3;  ///< dialogs within `offerWithin`
    static constexpr std::chrono::seconds offerWithin{10};
    static constexpr std::size_t waitingLimit = 100;  ///< those beyond are cancelled
    static constexpr std::size_t textLimit = 4000;    ///< characters
    static constexpr std::size_t lineLimit = 300;

    PageDialogs() = default;
    PageDialogs(const PageDialogs&) = delete;
    PageDialogs& operator=(const PageDialogs&) = delete;
    ~PageDialogs();

    /// The one that is to be shown; null if there is none. It stands until the next change.
    [[nodiscard]] const Shown* current() const {
        return waiting_.empty() ? nullptr : &waiting_.front().shown;
    }

    /// Asks at `now`. Texts are cut to their limits and freed of what could disguise them. `answer`
    /// is called once, perhaps before this returns; never after `withdraw`.
    Id ask(PageDialog dialog, Date now, Answer answer);
    /// Whoever asked doesn't want an answer any more.
    void withdraw(Id id);
    /// Answers one that waits, and with it the authentications of the same space. Others stand.
    void answer(Id id, const PageDialogAnswer& answer);
    /// Cancels all there are and all to come, until the document goes.
    void silence();
    /// While on, what a page asks of itself, beside `beforeUnload`, is cancelled at once: it is being
    /// left.
    void setLeaving(bool leaving);
    /// Cancels all there are.
    void cancelAll();
    /// Another document stands, or none any more.
    void documentGone();

    /// Calls `slot` when another one, or none, is in front.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

    /// A text of a page as a dialog shows it: cut to `textLimit` and `lineLimit`, without control
    /// characters and without what turns the direction of the text around it.
    [[nodiscard]] static std::string presentable(std::string_view text);

private:
    struct Waiting {
        Shown shown;
        Answer answer;
    };

    [[nodiscard]] bool isRefused(const PageDialog& dialog) const;
    [[nodiscard]] bool noteTime(const std::string& host, Date now);
    /// Takes those out that meet the condition.
    [[nodiscard]] std::vector<Waiting> take(const auto& condition);
    /// Takes those out, and answers them when observers have heard of it. This may be gone then.
    void end(const auto& condition, const PageDialogAnswer& answer);

    std::deque<Waiting> waiting_;
    std::deque<Date> times_;  ///< of the latest dialogs of `host_`
    std::string host_;
    bool isSilenced_ = false;
    bool isLeaving_ = false;
    Id last_ = 0;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
