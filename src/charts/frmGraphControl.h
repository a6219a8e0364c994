// The chart setup: a tool window of the chart screen, which it changes at once.
#pragma once

#include <QWidget>

class QLineEdit;
class QSlider;

namespace kelvrane {

class ChartTypeList;
class KeyedToolBar;
class TabStrip;
struct ViewSlider;

class frmGraphControl : public QWidget {
    Q_OBJECT
  public:
    /// Without a parent it belongs to the chart screen, if that is open.
    explicit frmGraphControl(QWidget* parent = nullptr);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* createTypePage();
    QWidget* createLegendAndTitle();
    QWidget* createViewPage();
    QSlider* createSlider(const ViewSlider& row);
    QWidget* createBorderPage();
    void bind();
    void showControls();
    void showSliders();
    void standBesideParent();

    KeyedToolBar* smuiToolBar;
    TabStrip* SSTab1;
    ChartTypeList* smuiAvailCharts;
    QLineEdit* txtTitle;
};

} // namespace kelvrane
