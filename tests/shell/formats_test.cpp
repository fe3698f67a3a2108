#include "shell/formats.h"

#include <gtest/gtest.h>

#include "platform/error.h"

namespace zorvel {
namespace {

TEST(Formats, NumbersReadAsTheirPatternsSay) {
    struct Case {
        std::int64_t number;
        const char *plain, *grouped, *grouped_or_zero, *grouped_or_dash, *digits;
    };
    for (const Case& c : {Case{0, " 0", "", "0", "-", ""}, Case{7, " 7", "7", "7", "7", "7"},
                          Case{1234, " 1234", "1,234", "1,234", "1,234", "1234"},
                          Case{1234567, " 1234567", "1,234,567", "1,234,567", "1,234,567", "1234567"},
                          Case{-1234, "-1234", "-1,234", "-1,234", "", "-1234"}}) {
        EXPECT_EQ(PlainNumber(c.number), c.plain);
        EXPECT_EQ(Grouped(c.number), c.grouped);
        EXPECT_EQ(GroupedOrZero(c.number), c.grouped_or_zero);
        EXPECT_EQ(GroupedOrDash(c.number), c.grouped_or_dash);
        EXPECT_EQ(Digits(c.number), c.digits);
    }
    EXPECT_EQ(SevenDigits(42), "0000042");
    EXPECT_EQ(SevenDigits(12345678), "12345678");
    EXPECT_EQ(Percentage(0.4567), "45.7%");
    EXPECT_EQ(Percentage(1), "100.0%");
    EXPECT_EQ(TwoDecimals(0.425), "0.42");
}

TEST(Formats, ANumberBoxIsReadUpToWhatIsNoNumber) {
    struct Case {
        const char* text;
        double number;
    };
    for (const Case& c :
         {Case{"", 0}, Case{"abc", 0}, Case{"12", 12}, Case{" 1 2x3", 12}, Case{"-2", -2}, Case{"+5", 5},
          Case{"0.5 s", 0.5}, Case{"1e3", 1000}, Case{"3E", 3}, Case{"--1", 0}}) {
        EXPECT_EQ(NumericValue(c.text), c.number) << c.text;
    }
    EXPECT_EQ(WholeValue("2.9"), 2);
    EXPECT_EQ(WholeValue("-2.9"), -2);
    EXPECT_THROW(WholeValue("2147483648"), Error);
}

TEST(Formats, DatesAndTimesKeepTheirZeros) {
    const DateTime time{2026, 2, 3, 4, 5, 6};
    EXPECT_EQ(DateAndTime(time), "03/02/2026 04:05:06");
    EXPECT_EQ(ShortYearDateAndTime(time), "03/02/26 04:05:06");
    EXPECT_EQ(ShortTime(time), "04:05");
    EXPECT_EQ(TimeStamp(time), "260203040506");
    EXPECT_EQ(ParseDateAndTime("03/02/2026 04:05:06"), time);
    EXPECT_EQ(ParseDateAndTime("29/02/2024"), (DateTime{2024, 2, 29, 0, 0, 0}));
    for (const char* wrong : {"", "3/2/2026", "31/02/2026", "03/02/2026 24:00:00", "03/02/2026 04:05:06x",
                              "03-02/2026", "03/02-2026", "-1/02/2026"}) {
        EXPECT_THROW(ParseDateAndTime(wrong), Error) << wrong;
    }
    EXPECT_EQ(FormatElapsed(3725), "01:02:05");
    EXPECT_EQ(FormatElapsed(360000), "100:00:00");
}

}  // namespace
}  // namespace zorvel
