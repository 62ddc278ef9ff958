#include "assistant/view/KestoComposerView.h"

#include "assistant/view/KestoMentionRow.h"
#include "assistant/view/KestoSkillRow.h"
#include "assistant/view/KestoText.h"
#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/label.h>

#include <utility>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr int rowSpacing = 4;
constexpr int chipSpacing = 5;
constexpr int sendSymbolSize = 13;
constexpr int removeSymbolSize = 8;
constexpr int plusSymbolSize = 13;
constexpr int menuHeight = 320;  // points; more scrolls
constexpr std::size_t titleLimit = 200;

void clear(Gtk::Box& box) {
    while (Gtk::Widget* const child = box.get_first_child()) box.remove(*child);
}

}  // namespace

KestoComposerView::KestoComposerView(KestoPanel& panel)
    : Gtk::Box(Gtk::Orientation::VERTICAL, spacing),
      panel_(panel),
      menu_(Gtk::Orientation::VERTICAL, rowSpacing),
      form_(panel),
      mentions_(Gtk::Orientation::HORIZONTAL, spacing),
      input_(Gtk::Orientation::HORIZONTAL, spacing) {
    add_css_class("kesto-composer");
    menu_.add_css_class("kesto-menu");
    menuScroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    menuScroller_.set_propagate_natural_height(true);
    menuScroller_.set_max_content_height(menuHeight);
    menuScroller_.set_child(menu_);
    nameScrollBars(menuScroller_);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) { return menuKeyPressed(key); }, false);
    menu_.add_controller(keys);
    const auto escape = Gtk::EventControllerKey::create();
    escape->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (key != GDK_KEY_Escape || !panel_.cancelSkill()) return false;
            focusField();
            return true;
        },
        false);
    form_.add_controller(escape);
    addMentions();
    addInput();
    panel_.text.connectChanged(sigc::mem_fun(*this, &KestoComposerView::textChanged));
    refresh();
}

void KestoComposerView::addMentions() {
    mentionsScroller_.set_policy(Gtk::PolicyType::EXTERNAL, Gtk::PolicyType::NEVER);
    mentions_.add_css_class("kesto-chips");
    mentionsScroller_.set_child(mentions_);
}

void KestoComposerView::addInput() {
    const std::string prompt = panel_.prompt();
    input_.add_css_class("kesto-input");
    field_.add_css_class("kesto-entry");
    field_.set_has_frame(false);
    field_.set_placeholder_text(prompt);
    setAccessibleLabel(field_, prompt);
    field_.set_width_chars(1);
    field_.set_hexpand(true);
    // The toolkit holds the field for as long as one of its keys is in hand, which may end this: then it
    // loses the keyboard once more.
    const auto ours = [this](auto slot) { return sigc::track_object(std::move(slot), *this); };
    field_.signal_changed().connect(ours([this] { panel_.text.set(field_.get_text().raw()); }));
    field_.signal_activate().connect(ours([this] { panel_.submit(); }));
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        ours([this](guint key, guint, Gdk::ModifierType) { return keyPressed(key); }), false);
    field_.add_controller(keys);
    const auto focus = Gtk::EventControllerFocus::create();
    focus->signal_enter().connect(ours([this] { panel_.inputFocused.set(true); }));
    focus->signal_leave().connect(ours([this] { panel_.inputFocused.set(false); }));
    field_.add_controller(focus);
    panel_.inputFocused.connectChanged(sigc::mem_fun(*this, &KestoComposerView::focusChanged));
    input_.append(field_);
    setSymbol(arrow_, "arrow.up", sendSymbolSize);
    send_.set_child(arrow_);
    send_.add_css_class("icon-button");
    send_.set_valign(Gtk::Align::CENTER);
    setAccessibleLabel(send_, std::string{KestoPanel::sendLabel});
    send_.signal_clicked().connect([this] { panel_.submit(); });
    input_.append(send_);
}

/// At once, so that what is typed right behind Return is not lost.
void KestoComposerView::textChanged() {
    if (field_.get_text().raw() == panel_.text.get()) return;
    field_.set_text(panel_.text.get());
    field_.set_position(-1);
}

void KestoComposerView::focusChanged() {
    if (panel_.inputFocused.get() && !holdsKeyboard(field_)) focusField();
}

void KestoComposerView::focusField() {
    field_.grab_focus_without_selecting();
    field_.set_position(-1);
}

void KestoComposerView::refresh() {
    const bool formStood = form_.get_parent() != nullptr;
    const bool formHeld = formStood && holdsKeyboard(form_);
    form_.refresh();
    refreshMenu();
    refreshMentions();
    send_.set_sensitive(panel_.canSend());
    showParts();
    if (panel_.makingSkill.get()) {
        if (!formStood) form_.focusName();
    } else if (formHeld) {
        focusField();
    }
}

void KestoComposerView::showParts() {
    std::vector<Gtk::Widget*> parts;
    if (panel_.makingSkill.get()) parts.push_back(&form_);
    if (!shownMenu_.empty()) parts.push_back(&menuScroller_);
    if (!shownMentions_.empty()) parts.push_back(&mentionsScroller_);
    parts.push_back(&input_);
    setChildren(*this, parts);
}

std::vector<std::string> KestoComposerView::menuKeys() const {
    std::vector<std::string> keys;
    switch (panel_.menu()) {
        case KestoPanel::Menu::skills:
            keys.emplace_back(KestoPanel::skillsTitle);
            for (const auto& skill : panel_.skills().matching(*panel_.skillQuery())) {
                keys.push_back(skill.id.string());
            }
            break;
        case KestoPanel::Menu::mentions:
            keys.emplace_back(KestoPanel::mentionsTitle);
            for (const auto& tab : panel_.mentionable(*panel_.mentionQuery())) {
                keys.push_back(tab->id().string() + tab->title() + '\n' + tab->host());
            }
            break;
        case KestoPanel::Menu::newSkill:
        case KestoPanel::Menu::none:
            break;
    }
    return keys;
}

void KestoComposerView::refreshMenu() {
    auto keys = menuKeys();
    if (keys == shownMenu_) return;
    shownMenu_ = std::move(keys);
    const bool held = holdsKeyboard(menu_);
    clearMenu();
    const auto menu = panel_.menu();
    if (menu == KestoPanel::Menu::skills) addSkills();
    if (menu == KestoPanel::Menu::mentions) addTabs();
    if (held && !panel_.makingSkill.get()) focusField();
}

void KestoComposerView::clearMenu() { clear(menu_); }

void KestoComposerView::addHeading(std::string_view title) {
    auto* const heading = Gtk::make_managed<Gtk::Label>(std::string{title});
    heading->add_css_class("kesto-heading");
    heading->set_xalign(0);
    menu_.append(*heading);
}

void KestoComposerView::addSkills() {
    addHeading(KestoPanel::skillsTitle);
    for (auto& skill : panel_.skills().matching(*panel_.skillQuery())) {
        menu_.append(*Gtk::make_managed<KestoSkillRow>(panel_, std::move(skill)));
    }
    auto* const create = Gtk::make_managed<Gtk::Button>();
    create->add_css_class("kesto-new-skill");
    auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, spacing);
    auto* const plus = Gtk::make_managed<Gtk::Image>();
    setSymbol(*plus, "plus", plusSymbolSize);
    line->append(*plus);
    line->append(*Gtk::make_managed<Gtk::Label>(std::string{KestoPanel::newSkillTitle}));
    create->set_child(*line);
    setAccessibleLabel(*create, std::string{KestoPanel::newSkillTitle});
    create->signal_clicked().connect([this] { panel_.makingSkill.set(true); });
    menu_.append(*create);
}

void KestoComposerView::addTabs() {
    addHeading(KestoPanel::mentionsTitle);
    const auto tabs = panel_.mentionable(*panel_.mentionQuery());
    if (tabs.empty()) {
        auto* const none = Gtk::make_managed<Gtk::Label>(std::string{KestoPanel::noMentions});
        none->add_css_class("kesto-none");
        none->set_xalign(0);
        menu_.append(*none);
    }
    for (const auto& tab : tabs) {
        const auto mention = [this, wanted = std::weak_ptr{tab}] {
            if (const auto live = wanted.lock()) panel_.mention(*live);
        };
        menu_.append(*Gtk::make_managed<KestoMentionRow>(*tab, panel_.store().icons(), mention));
    }
}

void KestoComposerView::refreshMentions() {
    const auto tabs = panel_.mentionedTabs();
    std::vector<std::string> keys;
    for (const auto& tab : tabs) keys.push_back(tab->id().string() + tab->title());
    if (keys == shownMentions_) return;
    shownMentions_ = std::move(keys);
    const bool held = holdsKeyboard(mentions_);
    clear(mentions_);
    for (const auto& tab : tabs) {
        const std::string title = oneLine(tab->title(), titleLimit);
        auto* const chip = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, chipSpacing);
        chip->add_css_class("kesto-chip");
        auto* const name = Gtk::make_managed<Gtk::Label>("@" + title);
        cutText(*name);
        name->set_max_width_chars(24);
        chip->append(*name);
        auto* const cross = Gtk::make_managed<Gtk::Image>();
        setSymbol(*cross, "xmark", removeSymbolSize);
        auto* const remove = Gtk::make_managed<Gtk::Button>();
        remove->set_child(*cross);
        remove->add_css_class("kesto-chip-remove");
        setAccessibleLabel(*remove, tr("Remove {1}", title));
        remove->signal_clicked().connect([this, wanted = std::weak_ptr{tab}] {
            if (const auto live = wanted.lock()) panel_.removeMention(*live);
        });
        chip->append(*remove);
        mentions_.append(*chip);
    }
    if (held) focusField();
}

bool KestoComposerView::keyPressed(guint key) {
    if (key == GDK_KEY_Escape) return panel_.cancelSkill();
    if ((key == GDK_KEY_Up || key == GDK_KEY_KP_Up) && !shownMenu_.empty()) {
        Gtk::Widget* const last = menu_.get_last_child();
        return last && last->grab_focus();
    }
    return false;
}

bool KestoComposerView::menuKeyPressed(guint key) {
    if (key == GDK_KEY_Escape) {
        focusField();
        return true;
    }
    const bool up = key == GDK_KEY_Up || key == GDK_KEY_KP_Up;
    if (!up && key != GDK_KEY_Down && key != GDK_KEY_KP_Down) return false;
    if (!menu_.child_focus(up ? Gtk::DirectionType::UP : Gtk::DirectionType::DOWN)) focusField();
    return true;
}

}  // namespace orvu
