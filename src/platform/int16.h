// Signed 16-bit numbers that raise Overflow instead of wrapping.
//
//     Int16 minutes = 32767;
//     minutes = minutes + 1;   // raises error 6
#pragma once

#include "platform/error.h"

#include <limits>

namespace kelvrane {

class Int16 {
  public:
    constexpr Int16() = default;
    /// Raises Overflow when the number lies outside -32768..32767.
    constexpr Int16(qint64 value) : m_value(checked(value)) {}
    constexpr operator int() const { return m_value; }

    constexpr Int16& operator+=(qint64 other) { return *this = Int16(m_value + other); }
    constexpr Int16& operator-=(qint64 other) { return *this = Int16(m_value - other); }

  private:
    static constexpr qint16 checked(qint64 value) {
        if (value < std::numeric_limits<qint16>::min() ||
            value > std::numeric_limits<qint16>::max())
            Raise(errors::Overflow);
        return static_cast<qint16>(value);
    }
    qint16 m_value = 0;
};

/// Integer remainder with the sign of the dividend; raises DivisionByZero.
inline int Modulo(int dividend, int divisor) {
    if (divisor == 0)
        Raise(errors::DivisionByZero);
    return dividend % divisor;
}

} // namespace kelvrane
