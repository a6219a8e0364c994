// The day calendar on screen: a month on the left, the rows of a day on the right.
#pragma once

#include <QWidget>

class QAbstractButton;
class QComboBox;
class QLabel;
class QMenu;
class QStackedWidget;

namespace kelvrane {

class KeyedPanel;
class MonthView;

class frmDayInfo : public QWidget {
    Q_OBJECT
  public:
    explicit frmDayInfo(QWidget* parent = nullptr);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QAbstractButton* addStep(const char* key);
    QComboBox* addList(const char* key);
    QLabel* addText(const char* key, QLabel* label);
    QWidget* createMonth();
    QWidget* createDay();
    void createMenus();
    void bind();
    void refresh();
    void popUp(const QPoint& globalPosition);

    MonthView* m_month;
    KeyedPanel* smuiDaysInfo;
    QStackedWidget* m_day; ///< the panel, or the status in its place
    QWidget* m_status;
    QMenu* mnuPopup;
    QList<QLabel*> m_texts;
    QList<QComboBox*> m_lists;
};

} // namespace kelvrane
