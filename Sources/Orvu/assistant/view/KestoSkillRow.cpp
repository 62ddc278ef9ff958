#include "assistant/view/KestoSkillRow.h"

#include "assistant/view/KestoText.h"
#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/box.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/label.h>

#include <utility>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr std::size_t nameLimit = 40;
constexpr std::size_t instructionLimit = 200;

}  // namespace

KestoSkillRow::KestoSkillRow(KestoPanel& panel, KestoSkill skill)
    : panel_(panel), skill_(std::move(skill)) {
    add_css_class("kesto-skill");
    const std::string word = "/" + oneLine(skill_.name, nameLimit);
    auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, spacing);
    auto* const name = Gtk::make_managed<Gtk::Label>(word);
    cutText(*name);
    name->add_css_class("kesto-skill-name");
    line->append(*name);
    auto* const text = Gtk::make_managed<Gtk::Label>(oneLine(skill_.instruction, instructionLimit));
    cutText(*text);
    text->add_css_class("kesto-skill-text");
    text->set_hexpand(true);
    line->append(*text);
    if (!skill_.builtIn) {
        auto* const yours = Gtk::make_managed<Gtk::Label>(std::string{KestoPanel::yours});
        yours->add_css_class("kesto-skill-yours");
        line->append(*yours);
    }
    set_child(*line);
    setAccessibleLabel(*this, word + " " + oneLine(skill_.instruction, instructionLimit));
    signal_clicked().connect([this] {
        const KestoSkill run = skill_;  // the row goes with what it does
        panel_.run(run);
    });
    if (!skill_.builtIn) addMenu();
}

KestoSkillRow::~KestoSkillRow() {
    if (menu_) menu_->unparent();
}

void KestoSkillRow::addMenu() {
    const auto actions = Gio::SimpleActionGroup::create();
    actions->add_action("delete", [this] {
        const KestoSkill removed = skill_;
        panel_.skills().remove(removed);
    });
    insert_action_group("skill", actions);
    const auto model = Gio::Menu::create();
    model->append(std::string{KestoPanel::deleteSkill}, "skill.delete");
    menu_ = std::make_unique<Gtk::PopoverMenu>(model);
    menu_->set_parent(*this);
    menu_->set_has_arrow(false);
    setAccessibleLabel(*menu_, phrase("Menu"));
    const auto click = Gtk::GestureClick::create();
    click->set_button(GDK_BUTTON_SECONDARY);
    click->signal_pressed().connect([this](int, double, double) { openMenu(); });
    add_controller(click);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType held) {
            const bool shift =
                (held & Gdk::ModifierType::SHIFT_MASK) == Gdk::ModifierType::SHIFT_MASK;
            if (key != GDK_KEY_Menu && !(key == GDK_KEY_F10 && shift)) return false;
            openMenu();
            return true;
        },
        false);
    add_controller(keys);
}

void KestoSkillRow::openMenu() { menu_->popup(); }

}  // namespace orvu
