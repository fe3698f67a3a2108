// The wall clock, as a port that tests replace.
#pragma once

namespace zorvel {

// A local date and time.
struct DateTime {
    int year = 0;
    int month = 0;  // 1 to 12
    int day = 0;    // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const DateTime&) const = default;
};

class Clock {
  public:
    virtual ~Clock() = default;

    // The local date and time.
    virtual DateTime Now() const = 0;
    // The local time of day in seconds since midnight, with fractions (0 to under 86400).
    virtual double Timer() const = 0;
    // Seconds since some moment, in steps of some milliseconds and without a midnight: much cheaper to read,
    // for what is asked often.
    virtual double CoarseTimer() const { return Timer(); }
    // Waits `seconds`; 0 or less returns at once.
    virtual void Sleep(double seconds) = 0;
};

class SystemClock final : public Clock {
  public:
    DateTime Now() const override;
    double Timer() const override;
    double CoarseTimer() const override;
    void Sleep(double seconds) override;

  private:
    // The time zone's rules are costly to look up and the clock is read at every log line and record: what
    // they gave is kept for the second and for the day.
    mutable long long second_ = -1;  // since the epoch
    mutable DateTime now_;           // at that second
    mutable double midnight_ = 0;    // the last one, in seconds since the epoch
};

// The local date and time of a moment in seconds since the epoch.
DateTime LocalTime(long long seconds_since_epoch);

// Seconds from `start` (a value of Timer) to now; a midnight in between is allowed for.
double SecondsSince(const Clock& clock, double start);

// Whole days from `from` to `to`: the number of midnights between them, negative when `to` is earlier.
int DaysBetween(const DateTime& from, const DateTime& to);

}  // namespace zorvel
