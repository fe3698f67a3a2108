#include "platform/clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace zorvel {
namespace {

constexpr double kSecondsPerDay = 86400;

double SecondsSinceEpoch() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

double TimeOfDay(double epoch_seconds) {
    const DateTime time = LocalTime(static_cast<long long>(epoch_seconds));
    const double fraction = epoch_seconds - static_cast<double>(static_cast<long long>(epoch_seconds));
    return time.hour * 3600 + time.minute * 60 + time.second + fraction;
}

}  // namespace

DateTime LocalTime(long long seconds_since_epoch) {
    const auto time = static_cast<std::time_t>(seconds_since_epoch);
    std::tm parts{};
    localtime_r(&time, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

DateTime SystemClock::Now() const {
    const auto second = static_cast<long long>(SecondsSinceEpoch());
    if (second != second_) {
        now_ = LocalTime(second);
        second_ = second;
    }
    return now_;
}

double SystemClock::Timer() const {
    const double now = SecondsSinceEpoch();
    if (now < midnight_ || now >= midnight_ + kSecondsPerDay) midnight_ = now - TimeOfDay(now);
    return now - midnight_;
}

double SystemClock::CoarseTimer() const {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    constexpr double kNanosecond = 1e-9;
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * kNanosecond;
}

void SystemClock::Sleep(double seconds) {
    if (seconds > 0) std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

double SecondsSince(const Clock& clock, double start) {
    const double elapsed = clock.Timer() - start;
    return elapsed < 0 ? elapsed + kSecondsPerDay : elapsed;
}

int DaysBetween(const DateTime& from, const DateTime& to) {
    const auto day_number = [](const DateTime& date) {
        return std::chrono::sys_days(std::chrono::year(date.year) / date.month / date.day)
            .time_since_epoch()
            .count();
    };
    return static_cast<int>(day_number(to) - day_number(from));
}

}  // namespace zorvel
