// Plays a script on the program and on the model of what was worked, and compares the two after
// each event: entries in memory, day file, rows of the history, waiting questions, prompt.
//
//     class Days : public DayRunner {};
//     TEST_F(Days, One) { EXPECT_TRUE(play(RandomDay(17)).problem.isEmpty()); }
#pragma once

#include "random_days/day_script.h"
#include "random_days/worked_model.h"
#include "support/working_day_fixture.h"
#include "tray/exit_prompt.h"
#include "tray/hidden_form.h"

#include <QPointer>
#include <QSqlDatabase>

#include <memory>
#include <vector>

namespace kelvrane::testing {

/// A timer that fires as the driver lets time pass.
class PassingTimer final : public IntervalTimer {
  public:
    void setInterval(int milliseconds) override;
    int interval() const override { return m_interval; }
    void setEnabled(bool on) override;
    void pass(int milliseconds);

  private:
    int m_interval = 0;
    int m_passed = 0;
    bool m_enabled = false;
};

class PassingTimers final : public Timers {
  public:
    IntervalTimer* create(QObject* parent) override;
    /// Only for timers that existed before.
    void pass(int milliseconds);

  private:
    QList<QPointer<PassingTimer>> m_timers;
};

/// Agrees to deletes; every other box gets its safest answer.
class AgreeingDialogs final : public Dialogs {
  public:
    BoxAnswer ask(const Box& box) override;
    std::optional<QString> openFile(const FileQuestion& /*question*/) override { return {}; }
    std::optional<QString> saveFile(const FileQuestion& /*question*/) override { return {}; }
    QStringList texts; ///< of the boxes since the last event
};

struct DayOutcome {
    QString problem;  ///< empty: the program is what was worked
    QStringList log;  ///< one line an event
    qsizetype played; ///< events until the problem
    QString report(const DayScript& script) const;
};

/// Puts the temporary folders into memory where the system has such a place: thousands of days are
/// flushed to the disk otherwise.
class FoldersInMemory {
  protected:
    FoldersInMemory();
    ~FoldersInMemory();

  private:
    QByteArray m_former;
};

class DayRunner : private FoldersInMemory, public WorkingDayTest {
  protected:
    DayRunner();
    ~DayRunner() override;

    DayOutcome play(const DayScript& script);
    /// The script without the events that its problem doesn't need.
    DayScript shrink(DayScript script);
    /// Plays it; a failure prints the shortest day that still fails.
    void expectWorked(const DayScript& script);

  private:
    void reset(const DayScript& script);
    void launch();
    Moment moment() const;

    void handle(const DayEvent& event);
    void tick();
    void passTime(int seconds);
    int secondsOf(const DayEvent& event) const;
    void showScreen();
    void correct(const DayEvent& event);
    void deleteRow(int number);
    void answerNight(int answer);
    void answerClock();
    void disturbHistory(EventKind kind);
    void releaseHistory();
    void end(const DayEvent& event);

    void compare(const QString& what, const QStringList& model, const QStringList& program);
    void check();
    void checkHistory();
    const QStringList& storedRows();
    QStringList sideBySide() const;
    void note(const QString& text);

    PassingTimers m_timers;
    AgreeingDialogs m_dialogs;
    std::unique_ptr<frmInfo> m_form;
    std::unique_ptr<ExitPrompt> m_prompt;
    std::vector<std::unique_ptr<ExitPrompt>> m_closedPrompts; ///< closed from their own commands
    WorkedModel m_model;
    DayOutcome m_outcome;
    QSqlDatabase m_otherProgram;
    QString m_hidden; ///< where the history went
    bool m_historyFree = true;
    int m_ticks = 0;
    int m_promptTicks = 0;
    QByteArray m_emptyHistory;
    QByteArray m_storedState; ///< of the history when m_storedRows were read
    QStringList m_storedRows;
    QByteArray m_zone;
};

} // namespace kelvrane::testing
