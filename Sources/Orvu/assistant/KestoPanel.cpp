#include "assistant/KestoPanel.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

/// What stands before and behind the last @ of a text, in whole characters.
struct AtSign {
    std::string_view before;
    std::string_view after;
};

std::optional<AtSign> lastAtSign(std::string_view text) {
    const auto all = characters(text);
    const auto found = std::ranges::find(all.rbegin(), all.rend(), "@");
    if (found == all.rend()) return std::nullopt;
    const auto at = static_cast<std::size_t>(found->data() - text.data());
    return AtSign{text.substr(0, at), text.substr(at + 1)};
}

bool endsInBlank(std::string_view text) { return characters(text).back() == " "; }

bool matches(const BrowserTab& tab, std::string_view query) {
    const std::string searched = lowercased(query);
    return containsCharacters(lowercased(tab.title()), searched) ||
           replacingAll(tab.host(), "www.", "").contains(searched);
}

}  // namespace

KestoPanel::KestoPanel(std::shared_ptr<BrowserStore> store, Kesto& kesto, SkillStore& skills,
                       Settings& settings, Observable<std::optional<std::string>>& pending,
                       std::function<void()> close)
    : store_(std::move(store)),
      kesto_(kesto),
      skills_(skills),
      settings_(settings),
      pending_(pending),
      close_(std::move(close)) {
    const auto changed = sigc::mem_fun(*this, &KestoPanel::changed);
    text.connectChanged(changed);
    makingSkill.connectChanged(changed);
    skillName.connectChanged(changed);
    skillInstruction.connectChanged(changed);
    store_->connectChanged(changed);
    kesto_.connectChanged(changed);
    skills_.connectChanged(changed);
    reading_->changed.connect(changed);
    pending_.connectChanged(sigc::mem_fun(*this, &KestoPanel::takePending));
    takePending();
}

Mood KestoPanel::mood() const {
    switch (kesto_.phase().kind) {
        case Kesto::Phase::Kind::thinking:
            return Mood::thinking;
        case Kesto::Phase::Kind::error:
            return Mood::surprised;
        case Kesto::Phase::Kind::idle:
        case Kesto::Phase::Kind::done:
            break;
    }
    return Mood::happy;
}

std::string KestoPanel::prompt() const {
    return store_->isPrivate() ? phrase("Ask anything") : phrase("Ask, @ a tab, or / for skills");
}

std::string KestoPanel::intro() const {
    if (store_->isPrivate()) {
        return phrase("This is a private window, so I don't read pages. Ask me anything else.");
    }
    const auto active = store_->active();
    if (!active || active->isNewTab())
        return phrase("Ask me anything, or type @ to bring in a tab.");
    return tr(
        "I can read “{1}” when you ask. Type @ to add other tabs. Everything stays on this Mac.",
        active->title());
}

KestoPanel::Reply KestoPanel::reply() const {
    if (reading_->count > 0) return Reply::dots;
    if (!kesto_.answer().empty()) return Reply::answer;
    return kesto_.phase().kind == Kesto::Phase::Kind::error ? Reply::error : Reply::dots;
}

KestoPanel::Menu KestoPanel::menu() const {
    if (makingSkill.get()) return Menu::newSkill;
    if (skillQuery()) return Menu::skills;
    if (mentionQuery() && !store_->isPrivate()) return Menu::mentions;
    return Menu::none;
}

bool KestoPanel::canSend() const { return !trimmed(text.get(), TrimSet::whitespaces).empty(); }

bool KestoPanel::canSaveSkill() const {
    return !skillName.get().empty() && !skillInstruction.get().empty();
}

std::optional<std::string> KestoPanel::skillQuery() const {
    const auto all = characters(text.get());
    if (all.empty() || all.front() != "/") return std::nullopt;
    if (std::ranges::find(all, " ") != all.end()) return std::nullopt;
    return text.get().substr(1);
}

std::optional<std::string> KestoPanel::mentionQuery() const {
    const auto at = lastAtSign(text.get());
    if (!at || (!at->before.empty() && !endsInBlank(at->before))) return std::nullopt;
    return std::string{at->after};
}

BrowserStore::TabList KestoPanel::mentionable(std::string_view query) const {
    BrowserStore::TabList found;
    for (const auto& tab : store_->tabs()) {
        if (found.size() == mentionableLimit) break;
        const bool isMentioned = std::ranges::find(mentions_, tab->id()) != mentions_.end();
        if (tab->isNewTab() || tab->id() == store_->activeID() || isMentioned) continue;
        if (query.empty() || matches(*tab, query)) found.push_back(tab);
    }
    return found;
}

BrowserStore::TabList KestoPanel::mentionedTabs() const {
    BrowserStore::TabList found;
    for (const Uuid& id : mentions_) {
        if (auto tab = store_->tab(id)) found.push_back(std::move(tab));
    }
    return found;
}

void KestoPanel::submit() {
    if (const auto query = skillQuery()) {
        const auto found = skills_.matching(*query);
        if (!found.empty()) return run(found.front());
    }
    const auto query = mentionQuery();
    if (query && !store_->isPrivate()) {
        const auto found = mentionable(*query);
        if (!found.empty()) return mention(*found.front());
    }
    send(text.get(), std::nullopt);
}

void KestoPanel::run(const KestoSkill& skill) { send(skill.instruction, "/" + skill.name); }

void KestoPanel::mention(const BrowserTab& tab) {
    const Uuid id = tab.id();
    mentions_.push_back(id);
    if (const auto at = lastAtSign(text.get())) text.set(std::string{at->before});
    changed();
    inputFocused.set(true);
}

void KestoPanel::removeMention(const BrowserTab& tab) {
    const Uuid id = tab.id();
    std::erase(mentions_, id);
    changed();
}

BrowserStore::TabList KestoPanel::tabsToRead() const {
    if (store_->isPrivate() || !settings_.kestoReadsPages.get()) return {};
    BrowserStore::TabList candidates;
    if (auto active = store_->active()) candidates.push_back(std::move(active));
    std::ranges::copy(store_->splitTabs(), std::back_inserter(candidates));
    std::ranges::copy(mentionedTabs(), std::back_inserter(candidates));
    BrowserStore::TabList tabs;
    for (const auto& tab : candidates) {
        const bool isKnown = std::ranges::find(tabs, tab) != tabs.end();
        if (tab->url() && !isKnown) tabs.push_back(tab);
    }
    return tabs;
}

void KestoPanel::send(std::string_view asked, const std::optional<std::string>& shown) {
    const std::string question{trimmed(asked, TrimSet::whitespacesAndNewlines)};
    if (question.empty()) return;
    const auto tabs = tabsToRead();
    lastQuestion_ = shown ? *shown + " · " + question : question;
    mentions_.clear();
    const auto reading = reading_;
    if (!tabs.empty()) ++reading->count;
    // Whoever hears of what follows may close the panel.
    const auto store = store_;
    Kesto& kesto = kesto_;
    if (text.get().empty()) {
        changed_.emit();
    } else {
        text.set("");
    }
    if (tabs.empty()) return kesto.ask(question, {});
    store->work().start(readAndAsk({.kesto = kesto,
                                    .reader = PageReader{store->loop()},
                                    .text = question,
                                    .tabs = {tabs.begin(), tabs.end()},
                                    .reading = reading}));
}

Task<void> KestoPanel::readAndAsk(Question question) {
    auto reads = question.reader.read(std::move(question.tabs));
    const auto pages = co_await reads;
    --question.reading->count;
    question.kesto.ask(question.text, pages);
    question.reading->changed.emit();
}

void KestoPanel::takePending() {
    const auto question = pending_.get();
    if (!question || question->empty()) return;
    pending_.set(std::nullopt);
    send(*question, std::nullopt);
}

void KestoPanel::saveSkill() {
    if (!skills_.add(skillName.get(), skillInstruction.get())) return;
    makingSkill.set(false);
    skillName.set("");
    skillInstruction.set("");
    text.set("");
}

bool KestoPanel::cancelSkill() {
    if (!makingSkill.get()) return false;
    makingSkill.set(false);
    return true;
}

void KestoPanel::close() const {
    const auto close = close_;  // the panel ends in it
    close();
}

}  // namespace orvu
