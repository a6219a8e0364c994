// A month that drops down to pick a day from, with buttons for the months and years beside it. It
// closes when a day was clicked, by Esc, and by a click elsewhere.
#pragma once

#include "calendar/month_grid.h"

#include <QDate>
#include <QFrame>

class QBoxLayout;
class QLabel;

namespace kelvrane {

class MonthView;

class MonthPopup : public QFrame {
    Q_OBJECT
  public:
    explicit MonthPopup(QWidget* parent);

    /// Opens under the rectangle, over it where there is no room, on the month of the date.
    void open(const QRect& globalAnchor, QDate chosen, QDate today);

  signals:
    void dayClicked(QDate day); ///< the popup is closed by then

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    using Step = MonthOfYear (*)(MonthOfYear, int);
    void addStep(QBoxLayout* row, const char* name, const char* icon, const QString& toolTip,
                 Step step, int by);
    void show(MonthOfYear month);

    MonthView* m_view;
    QLabel* m_title;
    MonthOfYear m_shown;
    QDate m_chosen;
    QDate m_today;
};

} // namespace kelvrane
