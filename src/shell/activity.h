// What long operations and the ESC key tell each other.
#pragma once

namespace zorvel {

struct Activity {
    bool Busy = false;           // a tree load or a run is in progress
    bool UserInterrupt = false;  // ESC was pressed while Busy; long loops test it once an item
    bool Closing = false;        // the program is ending: what is being read is given up
};

}  // namespace zorvel
