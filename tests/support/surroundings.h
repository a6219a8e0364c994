// What a test program sees of the machine: the fonts that the build depends on, UTC, plain English,
// no display, an empty home folder. What passes here passes on a bare machine.
//
//     int main(int argc, char** argv) {
//         const Surroundings surroundings; // before Qt's application, which reads them once
#pragma once

#include <QTemporaryDir>

namespace kelvrane::testing {

class Surroundings {
  public:
    /// Sets the environment of this process and of those that it starts.
    Surroundings();

  private:
    QTemporaryDir m_home;
};

} // namespace kelvrane::testing
