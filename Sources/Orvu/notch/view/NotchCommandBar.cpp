#include "notch/view/NotchCommandBar.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/text/PlatformText.h"
#include "look/view/Accessible.h"
#include "look/layout/view/ScrollTo.h"
#include "look/view/SymbolImage.h"

#include <string>

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 300;
constexpr double faceDot = 1.2;
constexpr double faceGap = 0.6;

void centre(Gtk::Widget& icon) {
    icon.set_hexpand(true);
    icon.set_halign(Gtk::Align::CENTER);
    icon.set_valign(Gtk::Align::CENTER);
}

}  // namespace

NotchCommandBar::NotchCommandBar(AddressNotch& notch, const BrowserStore& store)
    : SlidingBox(Motion::snappy, 10),
      notch_(notch),
      icons_(store.icons()),
      correction_([this] { body_->useCorrection(); }),
      primary_("↵"),
      primarySite_(icons_, hostIconSize),
      ask_(platformText("⌘↵")),
      face_(faceDot, faceGap),
      footer_(icons_, [this](const auto& chip) { body_->perform(chip.action(body_->query())); }) {
    add_css_class("notch-bar");
    addFieldRow();
    append(correction_);
    addChoices();
    addList();
    append(footer_);
    setKey(footer_, "footer");
}

void NotchCommandBar::addFieldRow() {
    fieldRow_.set_size_request(-1, fieldRowHeight);
    setSymbol(magnifier_, "magnifyingglass", 16);
    magnifier_.add_css_class("notch-magnifier");
    fieldRow_.append(magnifier_);
    bang_.add_css_class("notch-bang");
    bang_.set_valign(Gtk::Align::CENTER);
    fieldRow_.append(bang_);
    field_.set_hexpand(true);
    fieldRow_.append(field_);
    keyHint_.add_css_class("notch-key-hint");
    keyHint_.set_valign(Gtk::Align::CENTER);
    fieldRow_.append(keyHint_);
    append(fieldRow_);
}

NotchField::Handlers NotchCommandBar::fieldHandlers() {
    return {.text = [this](const std::string& text) { notch_.setQuery(text); },
            .caretAtEnd =
                [this](bool atEnd) {
                    if (body_) body_->setCaretAtEnd(atEnd);
                },
            .key =
                [this](NotchKey key) {
                    // The window ends with it whatever else is being edited.
                    if (key == NotchKey::escape && activate_action("win.endEditing")) return true;
                    return body_->press(key);
                }};
}

void NotchCommandBar::addChoices() {
    choices_.set_homogeneous(true);
    setSymbol(primaryGlobe_, NotchCandidates::primarySymbol, globeSize);
    for (Gtk::Widget* const icon :
         std::initializer_list<Gtk::Widget*>{&primarySite_, &primaryGlobe_}) {
        centre(*icon);
        primary_.iconPlace().append(*icon);
    }
    primary_.signal_clicked().connect([this] { body_->goPrimary(); });
    choices_.append(primary_);
    hideFromAccessibility(face_);
    centre(face_);
    ask_.iconPlace().append(face_);
    ask_.signal_clicked().connect([this] { body_->ask(); });
    choices_.append(ask_);
    append(choices_);
}

void NotchCommandBar::addList() {
    list_.property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(list_, phrase("Suggestions"));
    // As long as the list is short by construction, only a low window makes it scroll.
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroll_.set_propagate_natural_height(true);
    scroll_.set_child(list_);
    nameScrollBars(scroll_);
    append(scroll_);
}

void NotchCommandBar::setBody(AddressNotchBody& body) { body_ = &body; }

void NotchCommandBar::focusField() {
    field_.setText(notch_.query());
    field_.focusAll();
}

void NotchCommandBar::refresh() {
    refreshFieldRow();
    correction_.show(body_->correction());
    refreshChoices();
    refreshRows();
    footer_.show(body_->candidates().footer());
}

void NotchCommandBar::refreshFieldRow() {
    const auto& bang = body_->candidates().bang();
    magnifier_.set_visible(!bang);
    bang_.set_visible(bang.has_value());
    if (bang) bang_.set_text(std::string{bang->bang.name});
    field_.setText(notch_.query());
    field_.setGhost(body_->ghost());
    keyHint_.set_text(std::string{body_->keyHint()});
}

void NotchCommandBar::refreshChoices() {
    const NotchCandidates& candidates = body_->candidates();
    const std::string& host = candidates.primaryHost();
    primarySite_.set_visible(!host.empty());
    primaryGlobe_.set_visible(host.empty());
    if (!host.empty()) primarySite_.setHost(host);
    primary_.show(oneLine(candidates.primaryTitle(), titleLimit),
                  oneLine(candidates.primarySubtitle(), titleLimit));
    primary_.setHighlighted(body_->selection() < 0);
    ask_.show(oneLine(candidates.askTitle(), titleLimit), NotchCandidates::askSubtitle);
}

void NotchCommandBar::refreshRows() {
    const auto& entries = body_->entries();
    scroll_.set_visible(!entries.empty());
    for (std::size_t i = rows_.size(); i < entries.size(); ++i) {
        rows_.push_back(std::make_unique<NotchRow>(icons_, [this, i] {
            if (i < body_->entries().size()) body_->choose(body_->entries()[i]);
        }));
        list_.append(*rows_.back());
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i]->set_visible(i < entries.size());
        if (i >= entries.size()) continue;
        const bool heads = i == 0 || entries[i].section != entries[i - 1].section;
        list_.setKey(*rows_[i], entries[i].id);
        rows_[i]->show(entries[i], heads ? NotchRow::Heading::yes : NotchRow::Heading::no);
        rows_[i]->setSelected(static_cast<int>(i) == body_->selection());
    }
    revealSelected();
}

void NotchCommandBar::revealSelected() {
    const int selection = body_->selection();
    if (selection < 0 || static_cast<std::size_t>(selection) >= rows_.size()) {
        field_.describe("");
        return;
    }
    NotchRow& row = *rows_[static_cast<std::size_t>(selection)];
    field_.describe(row.name());
    scrollTo(scroll_, selection == 0 ? static_cast<Gtk::Widget&>(row) : row.row());
}

}  // namespace orvu
