// A program with both databases, a counter and the control screen's procedures in place: commands
// of the working day run as they do for a user, on a clock that is set.
#pragma once

#include "support/fakes.h"
#include "timevalues/counter.h"

#include <memory>

namespace kelvrane::testing {

class WorkingDayTest : public ProgramTest {
  protected:
    /// 9:00 AM on Monday, March 2, 2026; projects Alpha (1001), Beta (1002) and Gamma (Alpha).
    WorkingDayTest();
    ~WorkingDayTest() override;

    void start(const QString& name);
    /// Six ticks of the counter and a minute of the clock, as often as said.
    void passMinutes(int minutes);
    /// The retry of a roll-up that failed: the last timer that was made fires.
    void fireRetry();
    /// The question that waits, by its place; its first answers' captions behind it.
    QString waitingQuestion(int place = 0);
    /// "ProjectName|date|total|break" of every row of the history, in the order of their keys.
    QStringList history();
    /// The program was closed and starts again: memory is empty, files and databases stay.
    void restart();

    FakeTimer timer;
    std::unique_ptr<cTimer> counter;
    bool clockFollows = true; ///< passMinutes moves the clock too
};

} // namespace kelvrane::testing
