// The part of the tour that charts the history: one day, a range, the tree in both orders, the
// month view, no data, and the setup with its tabs.
#pragma once

#include "tour.h"

namespace kelvrane {
class Program;
}

namespace kelvrane::tour {

class ChartsTour {
  public:
    ChartsTour(Album& album, Program& program) : m_album(album), m_program(program) {}

    void run();

  private:
    QWidget* screen(Screen name) const;
    void picture(const char* name, Screen which = Screen::frmChart);
    /// Opens the first branch of the tree down to the times.
    void openBranch(int top);

    void oneDay();
    void range();
    void setup();
    void nothing();

    Album& m_album;
    Program& m_program;
};

} // namespace kelvrane::tour
