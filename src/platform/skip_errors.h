// Error policy of a routine: one guard a routine, one call a step. A step that raises RuntimeError
// is passed over and the next one runs; anything else (a bug, out of memory) goes through.
//
//     SkipErrors step("StopCurrentEntry");
//     step([&] { At(DayEntries, CurrentEntryIndex).StopTime = now; });
//     step([&] { SaveDayFile(); });
//
// Compute before you assign inside a step, so that a failed step leaves its target as it was.
#pragma once

#include "platform/error.h"

#include <QList>

#include <functional>
#include <utility>

namespace kelvrane {

struct SkippedError {
    QString routine;
    int number;
    QString description;
};

/// The last few errors that were passed over in this process, newest last. For tests and support.
QList<SkippedError>& SkippedErrors();

class SkipErrors {
  public:
    using Handler = std::function<void(const RuntimeError&)>;

    /// The handler, when given, sees each error before the next step runs.
    explicit SkipErrors(QString routine, Handler handler = {})
        : m_routine(std::move(routine)), m_handler(std::move(handler)) {}

    /// Runs the step. True when it went through.
    template <typename Step>
    bool operator()(Step&& step) {
        try {
            std::forward<Step>(step)();
            return true;
        } catch (const RuntimeError& error) {
            note(error);
            return false;
        }
    }

    /// Evaluates a condition; one that raises counts as False.
    template <typename Test>
    bool condition(Test&& test) {
        try {
            return std::forward<Test>(test)();
        } catch (const RuntimeError& error) {
            note(error);
            return false;
        }
    }

    int skippedCount() const { return m_count; }

  private:
    void note(const RuntimeError& error);

    QString m_routine;
    Handler m_handler;
    int m_count = 0;
};

} // namespace kelvrane
