#include "import/view/ImportForm.h"

#include "import/view/BrowserMark.h"
#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/CssClass.h"
#include "look/view/Ellipsis.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/image.h>

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

constexpr int dotCount = 9;
constexpr int dotsWidth = 44;
constexpr int lockSize = 11;
constexpr int longestTitle = 32;  ///< characters of the main button that are shown

void setUp(Gtk::Label& label, std::string_view text, const char* style) {
    label.set_text(std::string{text});
    label.add_css_class(style);
    label.set_xalign(0);
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
}

Gtk::Label& makeLabel(std::string_view text, const char* style) {
    auto& label = *Gtk::make_managed<Gtk::Label>();
    setUp(label, text, style);
    return label;
}

Gtk::Box& makeTexts(std::string_view above, std::string_view below) {
    auto& texts = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    texts.set_hexpand(true);
    texts.set_valign(Gtk::Align::CENTER);
    texts.append(makeLabel(above, "import-title"));
    texts.append(makeLabel(below, "import-caption"));
    return texts;
}

/// A row of the list. It says what its widgets show in one name.
Gtk::ToggleButton& makeRow(const ImportView::Source& source) {
    auto& line = *Gtk::make_managed<Gtk::Box>();
    line.add_css_class("import-line");
    line.append(*Gtk::make_managed<BrowserMark>(source.id, source.name));
    line.append(makeTexts(source.name, ImportView::state(source)));
    if (source.needsAccess) {
        auto& lock = *Gtk::make_managed<Gtk::Image>();
        setSymbol(lock, "lock.fill", lockSize);
        line.append(lock);
    }
    auto& row = *Gtk::make_managed<Gtk::ToggleButton>();
    row.add_css_class("import-row");
    row.set_child(line);
    setAccessibleLabel(row, source.name + ", " + std::string{ImportView::state(source)});
    return row;
}

Gtk::CheckButton& makeChoice(const ImportView::Choice& choice) {
    auto& button = *Gtk::make_managed<Gtk::CheckButton>();
    button.add_css_class("import-choice");
    button.set_child(makeTexts(choice.title, choice.caption));
    setAccessibleLabel(button, std::string{choice.title});
    setAccessibleDescription(button, std::string{choice.caption});
    button.set_active(choice.isOn->get());
    button.signal_toggled().connect(
        [&button, isOn = choice.isOn] { isOn->set(button.get_active()); });
    return button;
}

}  // namespace

ImportForm::ImportForm(std::shared_ptr<ImportView> import)
    : Gtk::Box(Gtk::Orientation::VERTICAL), import_(std::move(import)), dots_(dotCount) {
    add_css_class("import-form");
    addHead();
    list_.add_css_class("import-list");
    list_.property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(list_, std::string{ImportView::sourcesLabel});
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_vexpand(true);
    scroller_.add_css_class("import-scroll");
    scroller_.set_child(list_);
    nameScrollBars(scroller_);
    append(scroller_);
    addChoices();
    addAccessPanel();
    append(middle_);
    outcome_.add_css_class("import-outcome");
    setUp(message_, "", "import-message");
    setUp(help_, "", "import-caption");
    append(outcome_);
    addFoot();
    addKeys();
    import_->connectChanged(sigc::mem_fun(*this, &ImportForm::refresh));
    refresh();
}

ImportForm::~ImportForm() { notify_callbacks(); }

void ImportForm::addHead() {
    append(makeLabel(ImportView::heading, "import-heading"));
    setUp(intro_, "", "import-intro");
    append(intro_);
}

void ImportForm::addChoices() {
    choices_.add_css_class("import-choices");
    for (const auto& choice : import_->choices()) choices_.append(makeChoice(choice));
}

void ImportForm::addAccessPanel() {
    access_.add_css_class("import-access");
    access_.append(makeLabel(ImportView::accessMessage, "import-title"));
    setUp(accessHelp_, "", "import-caption");
    access_.append(accessHelp_);
    access_.append(makeLabel(ImportView::accessByFile, "import-caption"));
    auto& again = *Gtk::make_managed<Gtk::Button>(std::string{ImportView::checkTitle});
    again.add_css_class("sheet-button");
    again.set_halign(Gtk::Align::START);
    again.signal_clicked().connect([this] { import_->checkAgain(); });
    access_.append(again);
}

void ImportForm::addFoot() {
    foot_.add_css_class("import-foot");
    auto& passwords = makeLabel(ImportView::passwords, "import-caption");
    passwords.set_hexpand(true);
    foot_.append(passwords);
    dots_.set_size_request(dotsWidth, -1);
    dots_.set_valign(Gtk::Align::CENTER);
    dots_.setProgress(1);
    progress_.set_size_request(dotsWidth, -1);
    foot_.append(progress_);
    file_.add_css_class("sheet-button");
    file_.signal_clicked().connect([this] { import_->chooseFile(); });
    run_.add_css_class("sheet-button");
    run_.add_css_class("suggested");
    run_.signal_clicked().connect([this] { import_->run(); });
    for (auto* const button : {&file_, &run_}) {
        button->set_valign(Gtk::Align::CENTER);
        foot_.append(*button);
    }
    append(foot_);
}

/// In the list arrows choose, and Return means the main button there and in the choices.
void ImportForm::addKeys() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (isReturnKey(key) && (holdsKeyboard(list_) || holdsKeyboard(choices_))) {
                import_->run();
                return true;
            }
            if (key == GDK_KEY_Down) return moveInList(+1);
            if (key == GDK_KEY_Up) return moveInList(-1);
            return false;
        },
        false);
    add_controller(keys);
}

bool ImportForm::moveInList(int step) {
    const auto found = std::ranges::find_if(
        rows_, [](const Gtk::ToggleButton* row) { return holdsKeyboard(*row); });
    if (found == rows_.end()) return false;
    const auto last = static_cast<std::ptrdiff_t>(rows_.size()) - 1;
    const auto next = std::clamp<std::ptrdiff_t>(found - rows_.begin() + step, 0, last);
    auto& row = *rows_[static_cast<std::size_t>(next)];
    row.grab_focus();
    row.set_active(true);
    return true;
}

void ImportForm::showSources() {
    if (import_->sources() != shown_) {
        shown_ = import_->sources();
        rows_.clear();
        std::vector<Gtk::Widget*> widgets;
        for (const auto& source : shown_) {
            auto& row = makeRow(source);
            if (!rows_.empty()) row.set_group(*rows_.front());
            row.signal_toggled().connect([this, &row, id = source.id] {
                if (row.get_active()) import_->pick(id);
            });
            rows_.push_back(&row);
            widgets.push_back(&row);
        }
        setChildren(list_, widgets);
    }
    const auto& picked = import_->picked();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const bool isPicked = picked && picked->id == shown_[i].id;
        if (rows_[i]->get_active() != isPicked) rows_[i]->set_active(isPicked);
    }
}

void ImportForm::showOutcome() {
    std::vector<Gtk::Widget*> lines;
    if (const auto& message = import_->message()) {
        message_.set_text(*message);
        setCssClass(message_, "bad", import_->blocked());
        lines.push_back(&message_);
    }
    if (import_->blocked()) {
        help_.set_text(import_->help());
        lines.push_back(&help_);
    }
    setChildren(outcome_, lines);
}

void ImportForm::refresh() {
    intro_.set_text(import_->intro());
    showSources();
    accessHelp_.set_text(import_->help());
    setChildren(middle_, {import_->needsAccess() ? &access_ : &choices_});
    showOutcome();
    if (import_->working()) {
        setChildren(progress_, {&dots_});
    } else {
        setChildren(progress_, {});
    }
    file_.set_sensitive(!import_->working());
    run_.set_label(import_->runTitle());
    if (auto* const label = dynamic_cast<Gtk::Label*>(run_.get_child())) {
        limitLength(*label, longestTitle);
    }
    run_.set_sensitive(import_->canRun());
}

}  // namespace orvu
