// A number as the decimal digits that people see, so that rounding goes by them and not by the
// binary fraction behind: 1.005 to two places is 1.01.
//
//     DecimalDigits digits(1.005);
//     digits.round(2);
//     digits.at(-2);               // '1', the hundredths
#pragma once

#include <QByteArray>

namespace kelvrane {

class DecimalDigits {
  public:
    static constexpr int Significant = 15;

    /// The 15 significant digits of a finite number's magnitude; its sign is dropped.
    explicit DecimalDigits(double number);

    bool isZero() const { return m_digits.isEmpty(); }
    /// Digits before the point, 0 for numbers under 1; may be negative: -1 for 0.05.
    int wholeDigits() const { return m_point; }
    /// Digits behind the point, without zeros at the end; 0 for whole numbers.
    int decimals() const { return qMax(0, int(m_digits.size()) - m_point); }
    /// The digit at a power of ten: 0 the ones, -1 the tenths; '0' beyond both ends.
    char at(int power) const;

    /// Times ten to the power of places.
    void shift(int places);
    /// To so many decimals, half away from zero; negative: to tens, hundreds.
    void round(int decimals);

  private:
    void trim();

    QByteArray m_digits; ///< no zeros at either end; empty: zero
    int m_point = 0;     ///< the number is 0.digits times ten to this power
};

} // namespace kelvrane
