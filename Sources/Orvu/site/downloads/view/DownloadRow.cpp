#include "site/downloads/view/DownloadRow.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "site/downloads/DownloadDisplay.h"

#include <utility>

namespace orvu {
namespace {

using DownloadState = DownloadItem::State;

constexpr int documentSize = 16;
constexpr int documentColumn = 28;
constexpr int buttonSize = 18;

}  // namespace

DownloadRow::DownloadRow(std::shared_ptr<DownloadItem> item)
    : item_(std::move(item)), refresh_(*this, [this] { refresh(); }) {
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    add_css_class("download-row");
    setSymbol(document_, "doc", documentSize);
    document_.set_size_request(documentColumn, -1);
    append(document_);
    name_.add_css_class("download-name");
    name_.set_single_line_mode(true);
    name_.set_ellipsize(Pango::EllipsizeMode::MIDDLE);  // how it ends tells what it is
    name_.set_xalign(0);
    status_.add_css_class("download-status");
    status_.set_xalign(0);
    texts_.add_css_class("download-texts");
    texts_.set_hexpand(true);
    texts_.set_valign(Gtk::Align::CENTER);
    texts_.append(name_);
    texts_.append(progress_);
    texts_.append(status_);
    append(texts_);
    button_.add_css_class("download-button");
    button_.set_valign(Gtk::Align::CENTER);
    button_.set_child(symbol_);
    button_.signal_clicked().connect(sigc::mem_fun(*this, &DownloadRow::press));
    append(button_);
    item_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

DownloadRow::~DownloadRow() { notify_callbacks(); }

void DownloadRow::refresh() {
    const auto state = item_->state();
    const bool runs = state == DownloadState::running;
    if (name_.get_text().raw() != item_->name()) {
        name_.set_text(item_->name());
        name_.set_tooltip_text(item_->name());
        setAccessibleLabel(progress_, tr("Progress of {1}", item_->name()));
    }
    progress_.set_visible(runs);
    if (runs && progress_.get_fraction() != item_->fraction()) {
        progress_.set_fraction(item_->fraction());
    }
    status_.set_visible(!runs);
    const std::string status = DownloadDisplay::status(state);
    if (status_.get_text().raw() != status) status_.set_text(status);
    setCssClass(status_, "failed", state == DownloadState::failed);
    refreshButton(state);
    if (std::string spoken = DownloadDisplay::spoken(*item_); spoken != spoken_) {
        spoken_ = std::move(spoken);
        setAccessibleLabel(*this, spoken_);
    }
}

void DownloadRow::refreshButton(DownloadItem::State state) {
    const bool has = state == DownloadState::running || state == DownloadState::done;
    const bool loses = !has && button_.has_focus();
    button_.set_visible(has);
    if (loses) focusLost_.emit();
    const std::string help =
        state == DownloadState::running ? phrase("Cancel download") : phrase("Show in Finder");
    if (!has || button_.get_tooltip_text().raw() == help) return;
    const bool runs = state == DownloadState::running;
    setSymbol(symbol_, runs ? "xmark.circle.fill" : "magnifyingglass.circle.fill", buttonSize);
    button_.set_tooltip_text(help);
    setAccessibleLabel(button_, help);
}

void DownloadRow::press() {
    if (item_->state() == DownloadState::running) return item_->cancel();
    if (item_->state() == DownloadState::done) item_->showInFinder();
}

}  // namespace orvu
