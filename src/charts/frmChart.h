// The chart screen: tool bar with the dates, the chart, and the tree of the same data beside it.
#pragma once

#include <QWidget>

class QMenu;
class QStackedWidget;
class QTreeView;

namespace kelvrane {

class BarSplitter;
class ChartView;
class DateField;
class KeyedToolBar;
class MonthPopup;
enum class ChartDate;

class frmChart : public QWidget {
    Q_OBJECT
  public:
    explicit frmChart(QWidget* parent = nullptr);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void createBar();
    DateField* createDateField(const char* key, ChartDate which);
    QWidget* createChart();
    QWidget* createTree();
    QWidget* createNoData();
    void createMenus();
    void bind();
    void layOut();
    void showDates();
    void openMonth(const QString& key);

    KeyedToolBar* smuiToolBar;
    DateField* STARTDATE;
    DateField* ENDDATE;
    QStackedWidget* m_panes; ///< in the order of ChartPane
    BarSplitter* Splitter1;
    ChartView* ChartSpace1;
    QTreeView* TreeView1;
    QWidget* m_treeCard;
    MonthPopup* MonthView1;
    double m_chartShare = 0.64; ///< of the splitter
};

} // namespace kelvrane
