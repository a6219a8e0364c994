#include "worksheet/decimal_digits.h"

#include <cmath>

namespace kelvrane {

DecimalDigits::DecimalDigits(double number) {
    // "d.dddddddddddddde+xx"
    const QByteArray scientific = QByteArray::number(std::abs(number), 'e', Significant - 1);
    m_digits = scientific.left(Significant + 1).remove(1, 1);
    m_point = scientific.mid(scientific.indexOf('e') + 1).toInt() + 1;
    trim();
}

char DecimalDigits::at(int power) const {
    const int index = m_point - 1 - power;
    return index >= 0 && index < m_digits.size() ? m_digits[index] : '0';
}

void DecimalDigits::shift(int places) {
    if (!isZero())
        m_point += places;
}

void DecimalDigits::round(int decimals) {
    const int kept = m_point + decimals;
    if (kept >= m_digits.size())
        return;
    const bool up = kept >= 0 && m_digits[kept] >= '5';
    m_digits.truncate(qMax(0, kept));
    if (up) {
        while (m_digits.endsWith('9'))
            m_digits.chop(1);
        if (m_digits.isEmpty()) {
            m_digits = "1";
            ++m_point;
        } else {
            ++m_digits[m_digits.size() - 1];
        }
    }
    trim();
}

void DecimalDigits::trim() {
    while (m_digits.endsWith('0'))
        m_digits.chop(1);
    if (m_digits.isEmpty())
        m_point = 0;
}

} // namespace kelvrane
