// The one source of the present time.
#pragma once

#include <QDateTime>

namespace kelvrane {

class Clock {
  public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;

    QDate today() const { return now().date(); }
    QTime time() const { return now().time(); }
};

class SystemClock final : public Clock {
  public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace kelvrane
