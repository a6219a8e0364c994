// The week view as a table: projects down, days across, figures under each other. A day's header
// carries its number in the month; today's is filled.
#pragma once

#include <QTableView>

namespace kelvrane {

class WeekView;

class WeekTable : public QTableView {
    Q_OBJECT
  public:
    /// The view outlives the table.
    explicit WeekTable(WeekView* view, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void applyLook();
    void fitColumns();
};

} // namespace kelvrane
