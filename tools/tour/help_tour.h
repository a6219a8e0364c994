// The part of the tour that reads the help.
#pragma once

namespace kelvrane {
class Program;
}

namespace kelvrane::tour {

class Album;

class HelpTour {
  public:
    HelpTour(Album& album, Program& program) : m_album(album), m_program(program) {}

    /// Opens the help, and closes it at the end.
    void run();

  private:
    void picture(const char* name);
    void turnTo(const char* tab);
    void type(const char* field, const char* text);

    Album& m_album;
    Program& m_program;
};

} // namespace kelvrane::tour
