// What long operations and the ESC key tell each other.
#pragma once

namespace zorvel {

struct Activity {
    bool Busy = false;           // a tree load or a run is in progress
    bool UserInterrupt = false;  // ESC was pressed while Busy; long loops test it once an item
};

}  // namespace zorvel
