// The list inside a keyed panel: mouse and keys become what the items are told.
#pragma once

#include "widgets/panel_delegate.h"
#include "widgets/panel_model.h"

#include <QListView>
#include <QPointer>

namespace kelvrane {

class ChoicePopup;

class PanelView : public QListView {
    Q_OBJECT
  public:
    PanelView(KeyedItems* items, QWidget* parent);

    QString currentKey() const;
    void setCurrentKey(const QString& key);
    void setValueAlignment(Qt::Alignment alignment);
    void setProminent(const QStringList& keys);
    void setPlaceholder(const QString& text);

    /// In the viewport's coordinates.
    QRect rowRect(const QString& key) const;
    QRect valueRect(const QString& key) const;
    /// What Enter or a click on the row does.
    void activate(const QString& key);
    /// Height of all rows.
    int rowsHeight() const;

    QSize viewportSizeHint() const override { return {260, rowsHeight()}; }

  signals:
    void contextMenuWanted(const QString& key, const QPoint& globalPosition);
    void rowsHeightChanged();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;

  private:
    void onContents();
    void beginEdit(const QPersistentModelIndex& index);
    void openChoices(const QString& key);
    void updateChoices();
    bool takesKey(const QKeyEvent& event);
    void editNeighbour(int step);
    /// Whether the editor is open in one of the rows.
    bool holds(const QWidget* editor) const;

    KeyedItems* m_items;
    PanelModel* m_model;
    PanelDelegate* m_delegate;
    ChoicePopup* m_popup = nullptr; ///< made at its first use
    QString m_popupKey;
    QString m_pressedKey;
    QString m_placeholder;
};

} // namespace kelvrane
