// The part of the tour that follows the tutorial of the help: a first start with example data, a
// morning on it, and the timesheet and invoices of the example week.
#pragma once

#include "tour.h"

#include <QSize>

#include <memory>

namespace kelvrane {
class Program;
}

namespace kelvrane::tour {

class ExampleTour {
  public:
    ExampleTour(Album& album, TourClock& clock, TourTimers& timers, QString folder);
    ~ExampleTour();

    /// Leaves the process as it was, with data of its own in a folder of its own.
    void run();

  private:
    QWidget* screen(Screen name) const;
    void picture(const char* name, Screen which, QSize size);
    void firstStart();
    void startFromManager(int stepsOn);
    void morning();
    void timesheet();
    void invoices();
    void chart();

    Album& m_album;
    TourClock& m_clock;
    TourTimers& m_timers;
    QString m_folder;
    std::unique_ptr<Program> m_program;
};

} // namespace kelvrane::tour
