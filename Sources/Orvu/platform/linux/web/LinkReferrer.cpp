#include "platform/linux/web/LinkReferrer.h"

#include "foundation/json/Json.h"
#include "platform/linux/web/PageScript.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace orvu {
namespace {

using Done = std::function<void(const std::optional<Url>&)>;

/// How long a page may take, which may be busy, before the link opens without an answer.
constexpr std::chrono::milliseconds patience{300};

/// What is told at most; of a longer address the engine cuts what its policy says.
constexpr std::string_view script = R"js((link => {
    const own = [...document.links].find(each => each.href === link) ??
                [...document.images].find(each => each.currentSrc === link);
    if (!own || own.relList?.contains('noreferrer')) return '';
    const meta = document.querySelector('meta[name=referrer i]');
    switch (own.referrerPolicy || meta?.content.trim().toLowerCase()) {
        case 'no-referrer': case 'never': return '';
        case 'origin': case 'strict-origin': return location.origin + '/';
        case 'same-origin': return new URL(link).origin === location.origin ? location.href : '';
    }
    return location.href;
}))js";

/// An answer that comes once: the page's, or none in time.
struct Answer {
    Done done;
    Scheduled late;

    void give(const std::optional<Url>& referrer) {
        late.cancel();
        if (const auto tell = std::exchange(done, nullptr)) tell(referrer);
    }
};

}  // namespace

void findLinkReferrer(WebKitWebView* view, MainLoop& loop, const Url& link, Done done) {
    const auto answer = std::make_shared<Answer>(std::move(done));
    answer->late = loop.after(patience, [answer] {
        const auto held = answer;  // its end would take this closure along
        held->give(std::nullopt);
    });
    JsonWriter argument;
    argument.value(link);
    std::string call{script};
    call.append("(").append(std::move(argument).finish().value_or("''")).append(")");
    runPageScript(view, call, [answer](const ScriptResult& result) {
        const bool told = result.kind == ScriptResult::Kind::text;
        answer->give(told ? Url::parse(result.text) : std::nullopt);
    });
}

}  // namespace orvu
