// What long operations and the ESC key tell each other.
#pragma once

namespace zorvel {

struct Activity {
    bool Busy = false;           // a tree load, a run or the making of a report is in progress
    bool UserInterrupt = false;  // ESC was pressed while Busy; long loops test it once an item
    bool Closing = false;        // the program is ending: what is being read is given up
};

// The time of a long operation: Busy while it lives, and nothing of an earlier interruption at its beginning,
// nor of its own behind its end.
class BusyPeriod {
  public:
    explicit BusyPeriod(Activity& activity) : activity_(activity) { Set(true); }
    ~BusyPeriod() { Set(false); }
    BusyPeriod(const BusyPeriod&) = delete;
    BusyPeriod& operator=(const BusyPeriod&) = delete;

  private:
    void Set(bool busy) {
        activity_.Busy = busy;
        activity_.UserInterrupt = false;
    }

    Activity& activity_;
};

}  // namespace zorvel
