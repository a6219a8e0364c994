// Paints the rows of a panel and gives them their editor.
#pragma once

#include "platform/keyed_items.h"

#include <QSet>
#include <QStyledItemDelegate>

namespace kelvrane {

class PanelModel;

class PanelDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    PanelDelegate(PanelModel* model, QObject* parent);

    Qt::Alignment valueAlignment = Qt::AlignRight;
    QSet<QString> prominent; ///< keys

    /// Takes the widths of the columns from the rows there are; before painting a changed model.
    void measure(const QFont& font);

    /// Where the value of a row stands, its field included.
    QRect valueRect(const KeyedItem& item, const QRect& row) const;
    /// The button of a Browse row.
    QRect buttonRect(const QRect& row) const;
    /// Whether the row is too narrow for all it says.
    bool isElided(const KeyedItem& item, const QRect& row, const QFont& font) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

  private:
    struct Brush; ///< painter, option and item of one row

    void paintBackground(const Brush& brush) const;
    void paintHeading(const Brush& brush) const;
    void paintCaption(const Brush& brush) const;
    void paintValue(const Brush& brush) const;
    void paintField(const Brush& brush) const;
    void paintMark(const Brush& brush) const;
    void paintCommand(const Brush& brush) const;
    void paintProgress(const Brush& brush) const;
    QRect textRect(const KeyedItem& item, const QRect& row) const;
    QFont valueFont(const KeyedItem& item, const QFont& font) const;

    PanelModel* m_model;
    QFont m_captionFont;
    int m_captionWidth = 0;
    int m_gutter = 0; ///< room at the far end for arrows and buttons
};

} // namespace kelvrane
