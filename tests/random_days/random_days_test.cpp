// Days that a seed makes up, and days that were trouble once, on the program and on the model.
#include "random_days/day_runner.h"

#include <iostream>

using namespace kelvrane::testing;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int seedsEach = 25;
#else
constexpr int seedsEach = 250;
#endif

class RandomDays : public DayRunner {
  protected:
    /// A test plays its share of the seeds; KELVRANE_SEED=17 plays and prints just that one.
    void playShare(int share) {
        bool isOne = false;
        const int one = qEnvironmentVariableIntValue("KELVRANE_SEED", &isOne);
        if (isOne) {
            if (share == 0)
                std::cout << play(RandomDay(one)).report(RandomDay(one)).toStdString();
            return;
        }
        for (int seed = share * seedsEach; seed < (share + 1) * seedsEach && !HasFailure(); ++seed)
            expectWorked(RandomDay(seed));
    }
};

// Shares, so that they can run beside each other.
TEST_F(RandomDays, AreWhatWasWorked1) {
    playShare(0);
}
TEST_F(RandomDays, AreWhatWasWorked2) {
    playShare(1);
}
TEST_F(RandomDays, AreWhatWasWorked3) {
    playShare(2);
}
TEST_F(RandomDays, AreWhatWasWorked4) {
    playShare(3);
}
TEST_F(RandomDays, AreWhatWasWorked5) {
    playShare(4);
}
TEST_F(RandomDays, AreWhatWasWorked6) {
    playShare(5);
}
TEST_F(RandomDays, AreWhatWasWorked7) {
    playShare(6);
}
TEST_F(RandomDays, AreWhatWasWorked8) {
    playShare(7);
}

// ------------------------------------------------------------------- days that were trouble once

DayEvent pass(int seconds) {
    return {EventKind::Pass, seconds};
}
DayEvent passToMidnight(int seconds) {
    return {EventKind::Pass, seconds, Stretch::ToMidnight};
}
DayEvent sleepFor(int seconds) {
    return {EventKind::Sleep, seconds};
}
DayEvent jump(int seconds) {
    return {EventKind::Jump, seconds};
}
DayEvent starts(int project) {
    return {EventKind::Start, project};
}
DayEvent does(EventKind kind, int amount = 0) {
    return {kind, amount};
}
DayEvent ends(EventKind kind, int secondsOff) {
    return {kind, 0, Stretch::Seconds, CorrectedField::Start, secondsOff};
}

constexpr int hours = 3600;
constexpr int minutes = 60;

class TroubleDays : public DayRunner {
  protected:
    void plays(const char* what, const char* zone, const char* begins,
               const QList<DayEvent>& events, int stopWork = 17 * 60) {
        SCOPED_TRACE(what);
        expectWorked({.zone = QString::fromLatin1(zone),
                      .begins = QString::fromLatin1(begins),
                      .stopWork = stopWork,
                      .events = events});
    }
};

TEST_F(TroubleDays, Midnight) {
    for (const char* begins : {"2026-03-02 23:20:05", "2026-03-02 23:20:35"})
        plays("a prompt of 11:45 PM that nobody answers", "UTC", begins,
              {starts(0), pass(2 * hours)}, 23 * 60 + 45);
    for (int still : {1, 2, 5, 10})
        plays("the process stands still over 12:01", "UTC", "2026-03-02 22:30:00",
              {starts(0), passToMidnight(-30), does(EventKind::StandStill, still * minutes),
               pass(10), pass(5 * minutes), starts(1), ends(EventKind::LogOut, 30)});
    plays("tray Stop, and the lid closed over a weekend", "UTC", "2026-02-27 16:00:20",
          {starts(0), pass(30 * minutes), does(EventKind::TrayStop), pass(10 * minutes),
           sleepFor(64 * hours), pass(5 * minutes), starts(1), pass(20)});
    plays("a break over midnight", "UTC", "2026-03-02 23:40:00",
          {starts(0), pass(5 * minutes), does(EventKind::Break), pass(30 * minutes),
           does(EventKind::Break), pass(10 * minutes), does(EventKind::Stop)});
}

TEST_F(TroubleDays, Sleep) {
    plays("asleep within the first minute", "UTC", "2026-03-02 17:40:05",
          {starts(0), sleepFor(15 * hours), pass(20), does(EventKind::AnswerNight, 1),
           pass(10 * minutes), does(EventKind::Stop)});
    for (int answer : {0, 1, 2})
        plays("a weekend asleep, and each answer", "UTC", "2026-02-27 17:40:05",
              {starts(0), pass(10 * minutes), sleepFor(64 * hours), pass(40),
               does(EventKind::AnswerNight, answer), pass(10 * minutes), starts(1), pass(60)});
    plays("a break slept through", "UTC", "2026-03-02 09:00:05",
          {starts(0), pass(30 * minutes), does(EventKind::TrayBreak), pass(20), sleepFor(1 * hours),
           pass(20), does(EventKind::TrayBreak), pass(10 * minutes), does(EventKind::Stop)});
    plays("a night on a break", "UTC", "2026-03-02 17:00:05",
          {starts(0), pass(3 * minutes), does(EventKind::Break), sleepFor(15 * hours), pass(20),
           does(EventKind::AnswerNight, 0), pass(3 * minutes), does(EventKind::Break),
           pass(3 * minutes), does(EventKind::Stop)});
    plays("counted after a night on a break", "UTC", "2026-03-02 17:00:05",
          {starts(0), pass(3 * minutes), does(EventKind::Break), sleepFor(15 * hours), pass(20),
           does(EventKind::AnswerNight, 1), pass(3 * minutes), does(EventKind::Break),
           pass(3 * minutes), does(EventKind::Stop)});
}

TEST_F(TroubleDays, SummerTime) {
    struct Case {
        const char *what, *zone, *begins;
    };
    const Case cases[] = {
        {"an hour less from midnight on", "America/Havana", "2024-03-09 22:10:05"},
        {"an hour twice from midnight on", "America/Havana", "2024-11-02 22:10:05"},
        {"an hour less from midnight on", "Atlantic/Azores", "2024-03-30 22:10:05"},
        {"an hour twice from midnight on", "Atlantic/Azores", "2024-10-26 22:10:05"},
        {"an hour less", "Europe/Berlin", "2024-03-31 00:10:05"},
        {"an hour twice", "Europe/Berlin", "2024-10-27 00:10:05"},
        {"half an hour less", "Australia/Lord_Howe", "2024-10-06 00:10:05"},
        {"an hour less from midnight on", "Africa/Cairo", "2024-04-25 22:10:05"},
        {"the hour before midnight twice", "Africa/Cairo", "2024-10-31 21:10:05"},
    };
    for (const Case& each : cases)
        plays(each.what, each.zone, each.begins,
              {starts(0), pass(40 * minutes), does(EventKind::Break), pass(20 * minutes),
               does(EventKind::Break), pass(4 * hours), does(EventKind::Stop)});
}

TEST_F(TroubleDays, WrongClock) {
    plays("back half an hour", "UTC", "2026-03-02 09:00:05",
          {starts(0), pass(60 * minutes), jump(-30 * minutes), pass(10 * minutes), starts(1),
           pass(10 * minutes), does(EventKind::Stop)});
    plays("back before midnight", "UTC", "2026-03-02 00:20:05",
          {starts(0), pass(10 * minutes), jump(-1 * hours), pass(10 * minutes),
           does(EventKind::AnswerClock), pass(10 * minutes), starts(1), pass(10 * minutes)});
    plays("a day forward and back", "UTC", "2026-03-02 09:00:05",
          {starts(0), pass(60 * minutes), jump(24 * hours), pass(20 * minutes), starts(1),
           pass(5 * minutes), jump(-24 * hours), pass(10 * minutes), does(EventKind::AnswerClock),
           pass(10 * minutes), starts(0), pass(5 * minutes), does(EventKind::Stop)});
    plays("a stopped day, a day forward and back", "UTC", "2026-03-02 09:00:05",
          {starts(0), pass(60 * minutes), does(EventKind::Stop), jump(24 * hours),
           pass(20 * minutes), jump(-24 * hours), pass(10 * minutes), starts(0), pass(5 * minutes),
           does(EventKind::Stop)});
    plays(
        "midnight comes while the day is ahead", "UTC", "2026-03-03 00:20:05",
        {starts(0), pass(10 * minutes), jump(-1 * hours), pass(2 * hours), does(EventKind::Stop)});
    plays("the clock is put right in the night", "UTC", "2026-03-03 00:20:05",
          {starts(0), pass(10 * minutes), does(EventKind::Stop), jump(-4 * hours),
           pass(10 * minutes), does(EventKind::AnswerClock), starts(0), pass(10 * minutes),
           does(EventKind::Stop)});
}

TEST_F(TroubleDays, Restarts) {
    plays("exit with an entry running, and on tomorrow", "UTC", "2026-03-02 16:00:05",
          {starts(0), pass(47 * minutes), starts(1), pass(9 * minutes),
           ends(EventKind::ExitProgram, 16 * hours), pass(20), starts(1), pass(60)});
    plays("exit with an entry running, and on at once", "UTC", "2026-03-02 15:00:05",
          {starts(0), pass(47 * minutes), ends(EventKind::LogOut, 20 * minutes), pass(20),
           starts(1), pass(60)});
    plays("killed during a break", "UTC", "2026-03-02 09:00:05",
          {starts(0), pass(20 * minutes), does(EventKind::Break), pass(5 * minutes),
           ends(EventKind::Kill, 10 * minutes), pass(10 * minutes), does(EventKind::Break),
           pass(5 * minutes), does(EventKind::Stop)});
    plays("the history in use until the next day", "UTC", "2026-03-02 15:00:05",
          {starts(0), pass(47 * minutes), does(EventKind::LockHistory), starts(1),
           pass(20 * minutes), ends(EventKind::Kill, 16 * hours), pass(60), starts(2),
           pass(5 * minutes), does(EventKind::ReleaseHistory)});
}

} // namespace
