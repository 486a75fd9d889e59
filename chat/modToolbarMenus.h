#pragma once
// The menus that the panel's buttons, the toolbar's own menu and the icon in the notification area
// share. Each is filled anew when it is shown, so that marks are right; what nobody does
// (ToolbarRoutes) is left out.
namespace velora {

class Menu;

void fillWavItems(Menu& mnuWavItem);
void fillIMItems(Menu& mnuIMItem);
/// The people in the room, each with what can be done with them. Asks AOL.
void fillPeopleItems(Menu& mnuPeopleItem);
void fillHugItems(Menu& menu);
void fillFadeItems(Menu& menu);
/// What extends the chat room: the user's commands, the keyword list, the multi-line window.
void fillExItems(Menu& mnuExItem);
/// The editors of the user's lists.
void fillEditItems(Menu& mnuEditItem);
void fillHelpItems(Menu& menu);

} // namespace velora
