// The part of the tour that keeps projects, customers, days and settings: each screen with data,
// empty, and with a message on it.
#pragma once

#include "tour.h"

namespace kelvrane {
class Program;
}

namespace kelvrane::tour {

class EditingTour {
  public:
    EditingTour(Album& album, Program& program) : m_album(album), m_program(program) {}

    /// On databases without rows, before anything was started.
    void onNothing();
    /// On a day with several entries, the last one running.
    void onWorkingDay();

  private:
    QWidget* screen(Screen name) const;
    void picture(const char* name, Screen which);

    void databaseManager();
    void customerBrowser();
    void modifyEntry();
    void options();
    void dayCalendar();

    Album& m_album;
    Program& m_program;
};

} // namespace kelvrane::tour
