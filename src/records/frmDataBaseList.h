// The list view of the Database Manager: all projects in columns, an inactive one's flag in red,
// long texts elided in the middle and whole in a tool tip.
#pragma once

#include <QTreeView>

namespace kelvrane {

class ProjectList;

class frmDataBaseList : public QTreeView {
    Q_OBJECT
  public:
    /// The list outlives the view.
    explicit frmDataBaseList(ProjectList* list, QWidget* parent = nullptr);

  signals:
    void RowChosen(int row); ///< 1-based, 0: none
    void RowTaken();         ///< double click or Enter on the row chosen
    void ColumnClicked(int column);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void layOutColumns();
    void showSortArrow();
    void showRow(int row);

    ProjectList* m_list;
};

} // namespace kelvrane
