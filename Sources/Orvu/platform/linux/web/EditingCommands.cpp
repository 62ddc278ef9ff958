#include "platform/linux/web/EditingCommands.h"

#include <webkit/webkit.h>

#include <algorithm>
#include <array>

namespace orvu {
namespace {

struct CommandNames {
    EditingCommand command;
    const char* inPage;   ///< the engine's command
    const char* inField;  ///< the toolkit's action
};

constexpr std::array<CommandNames, 6> names{
    {{EditingCommand::undo, WEBKIT_EDITING_COMMAND_UNDO, "text.undo"},
     {EditingCommand::redo, WEBKIT_EDITING_COMMAND_REDO, "text.redo"},
     {EditingCommand::cut, WEBKIT_EDITING_COMMAND_CUT, "clipboard.cut"},
     {EditingCommand::copy, WEBKIT_EDITING_COMMAND_COPY, "clipboard.copy"},
     {EditingCommand::paste, WEBKIT_EDITING_COMMAND_PASTE, "clipboard.paste"},
     {EditingCommand::selectAll, WEBKIT_EDITING_COMMAND_SELECT_ALL, "selection.select-all"}}};

}  // namespace

bool editInFocus(Gtk::Window& window, EditingCommand command) {
    Gtk::Widget* const focus = window.get_focus();
    const auto found = std::ranges::find(names, command, &CommandNames::command);
    if (!focus || found == names.end()) return false;
    if (WEBKIT_IS_WEB_VIEW(focus->gobj())) {
        webkit_web_view_execute_editing_command(WEBKIT_WEB_VIEW(focus->gobj()), found->inPage);
        return true;
    }
    return gtk_widget_activate_action(focus->gobj(), found->inField, nullptr) != FALSE;
}

}  // namespace orvu
