// The clock: days and times of a time zone, and what one timer says to another.
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "support/fake_clock.h"

namespace zorvel {
namespace {

constexpr const char* kGermany = "CET-1CEST,M3.5.0,M10.5.0/3";

class Clocks : public testing::Test {
  protected:
    // From here on the process is in `zone`, written as POSIX has it.
    static void MoveTo(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~Clocks() override {
        unsetenv("TZ");
        tzset();
    }
};

TEST_F(Clocks, LocalTimesAreThoseOfTheTimeZone) {
    struct Case {
        const char* zone;
        long long seconds;
        DateTime time;
    };
    // In Germany an hour comes twice and another is left out.
    for (const Case& c :
         {Case{"UTC0", -1, {1969, 12, 31, 23, 59, 59}}, Case{"UTC0", 4102444800, {2100, 1, 1}},
          Case{"IST-5:30", 1709164800, {2024, 2, 29, 5, 30}},
          Case{"NST3:30", 1709164800, {2024, 2, 28, 20, 30}},
          Case{kGermany, 1792889999, {2026, 10, 25, 2, 59, 59}},
          Case{kGermany, 1792890000, {2026, 10, 25, 2}}, Case{kGermany, 1774745999, {2026, 3, 29, 1, 59, 59}},
          Case{kGermany, 1774746000, {2026, 3, 29, 3}}}) {
        MoveTo(c.zone);
        EXPECT_EQ(LocalTime(c.seconds), c.time) << c.zone << " " << c.seconds;
    }
}

TEST_F(Clocks, DaysAreTheMidnightsBetweenTwoDates) {
    struct Case {
        DateTime from, to;
        int days;
    };
    for (const Case& c :
         {Case{{2026, 11, 16}, {2026, 11, 16, 23, 59, 59}, 0},
          Case{{2026, 12, 31, 23, 59, 59}, {2027, 1, 1}, 1}, Case{{2024, 2, 28, 12}, {2024, 3, 1, 1}, 2},
          Case{{2100, 2, 28, 12}, {2100, 3, 1, 13}, 1}, Case{{2000, 1, 1}, {2001, 1, 1}, 366}}) {
        EXPECT_EQ(DaysBetween(c.from, c.to), c.days);
        EXPECT_EQ(DaysBetween(c.to, c.from), -c.days);
    }
}

TEST_F(Clocks, TheTimerSaysWhatTheDateAndTimeDo) {
    for (const char* zone : {"UTC0", "IST-5:30", "AHEAD-14", "BEHIND12", kGermany}) {
        MoveTo(zone);
        const SystemClock clock;
        DateTime before;
        double timer = 0;
        do {  // until all are read within a second
            before = clock.Now();
            timer = clock.Timer();
        } while (before != clock.Now());
        EXPECT_EQ(static_cast<int>(timer), before.hour * 3600 + before.minute * 60 + before.second) << zone;
    }
}

TEST_F(Clocks, TheCoarseTimerHasPassedWhatWasSlept) {
    SystemClock clock;
    const double start = clock.CoarseTimer();
    clock.Sleep(0.05);
    const double end = clock.CoarseTimer();
    EXPECT_GE(end, start + 0.03);  // less its steps
    for (int reads = 0; reads < 1000; ++reads)
        ASSERT_GE(clock.CoarseTimer(), end);
}

TEST_F(Clocks, SecondsAreCountedOverMidnight) {
    test::FakeClock clock;
    for (const auto& [start, timer, seconds] :
         {std::tuple{10.0, 10.0, 0.0}, {10.0, 12.5, 2.5}, {86399.5, 0.0, 0.5}, {43200.0, 43199.0, 86399.0}}) {
        clock.timer = timer;
        EXPECT_EQ(SecondsSince(clock, start), seconds) << start;
    }
}

}  // namespace
}  // namespace zorvel
