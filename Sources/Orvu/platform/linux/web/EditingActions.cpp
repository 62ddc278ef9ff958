#include "platform/linux/web/EditingActions.h"

#include <webkit/webkit.h>

#include <algorithm>
#include <array>

namespace orvu {
namespace {

struct EditingCommand {
    std::string_view name;
    const char* inPage;   ///< the engine's command
    const char* inField;  ///< the toolkit's action
};

constexpr std::array<EditingCommand, 6> commands{
    {{"undo", WEBKIT_EDITING_COMMAND_UNDO, "text.undo"},
     {"redo", WEBKIT_EDITING_COMMAND_REDO, "text.redo"},
     {"cut", WEBKIT_EDITING_COMMAND_CUT, "clipboard.cut"},
     {"copy", WEBKIT_EDITING_COMMAND_COPY, "clipboard.copy"},
     {"paste", WEBKIT_EDITING_COMMAND_PASTE, "clipboard.paste"},
     {"selectAll", WEBKIT_EDITING_COMMAND_SELECT_ALL, "selection.select-all"}}};

}  // namespace

void editInFocus(Gtk::Window& window, std::string_view action) {
    Gtk::Widget* const focus = window.get_focus();
    const auto found = std::ranges::find(commands, action, &EditingCommand::name);
    if (!focus || found == commands.end()) return;
    if (WEBKIT_IS_WEB_VIEW(focus->gobj())) {
        webkit_web_view_execute_editing_command(WEBKIT_WEB_VIEW(focus->gobj()), found->inPage);
    } else {
        gtk_widget_activate_action(focus->gobj(), found->inField, nullptr);
    }
}

}  // namespace orvu
