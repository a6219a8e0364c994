// A month on screen: a label for each of the 42 days of a MonthGrid under the heads of the
// weekdays. The arrow keys go from day to day, Enter and Space click, PageUp and PageDown ask for
// another month.
//
//     auto* month = new MonthView("dateLabel", this);   // labels dateLabel0 to dateLabel41
//     month->setGrid(BuildMonthGrid(shown, today));
#pragma once

#include "calendar/month_grid.h"

#include <QWidget>

#include <array>

class QKeyEvent;

namespace kelvrane {

class DayLabel;

class MonthView : public QWidget {
    Q_OBJECT
  public:
    explicit MonthView(const QString& labelName, QWidget* parent = nullptr);

    /// The focus stays on its day of the month, or goes to the last one when there is no such day.
    void setGrid(const MonthGrid& grid);

  signals:
    // Indexes count the labels from 0.
    void dayClicked(int index);
    /// Right button pressed on a day, or the context-menu key.
    void dayMenuWanted(int index, const QPoint& globalPosition);
    void monthStepWanted(int step); ///< 1 or -1

  private:
    friend class DayLabel;
    void setCurrent(int index);
    int currentIn(const MonthGrid& grid) const;
    int nearestDay(int index, int step) const;
    bool takesKey(int index, int key);

    MonthGrid m_grid;
    std::array<DayLabel*, GridDayCount> m_labels;
    int m_current = 0; ///< the label that Tab reaches
};

} // namespace kelvrane
