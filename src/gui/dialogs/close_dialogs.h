// Ends what waits for the user.
#pragma once

namespace zorvel {

// Closes menus and modal dialogs, the last one opened first; message boxes are answered with their default
// button. Stops at a dialog that is at work and stays.
void CloseDialogs();

}  // namespace zorvel
