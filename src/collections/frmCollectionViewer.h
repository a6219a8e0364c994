// The collection viewer on screen: the list of sheets, and beside it the sheet for reading, in the
// editor, or the words that it isn't there.
#pragma once

#include <QWidget>

class QLabel;
class QStackedWidget;

namespace kelvrane {

class BarSplitter;
class EntryList;
class FlatButton;
class KeyedToolBar;
class SheetEditor;
class SheetView;

class frmCollectionViewer : public QWidget {
    Q_OBJECT
  public:
    explicit frmCollectionViewer(QWidget* parent = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void arrange();
    void bind();
    void showPane();
    void showLocation();
    void markCurrent();

    KeyedToolBar* smuiToolBar;
    EntryList* smuiCollections;
    SheetView* Web;
    SheetEditor* ss1;
    QLabel* txtError;
    QStackedWidget* m_panes;
    BarSplitter* Splitter;
    FlatButton* LOCATION;
    double m_listShare = 0.24; ///< of the width
};

} // namespace kelvrane
