#include "widgets/panel_delegate.h"

#include "widgets/captions.h"
#include "widgets/mark_painter.h"
#include "widgets/panel_model.h"
#include "widgets/theme.h"

#include <QLineEdit>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr int Inset = theme::Margin; // of the text from the panel's edge
constexpr int WashInset = 4;         // of the wash
constexpr int ButtonWidth = 24;
constexpr int ArrowSide = 14;
constexpr int FieldPad = 6;

bool HasColumns(ItemKind kind) {
    return kind == ItemKind::Text || kind == ItemKind::Edit || kind == ItemKind::DropDown ||
           kind == ItemKind::Browse || kind == ItemKind::Progress;
}

bool IsField(ItemKind kind) {
    return kind == ItemKind::Edit || kind == ItemKind::DropDown || kind == ItemKind::Browse;
}

} // namespace

struct PanelDelegate::Brush {
    QPainter& painter;
    const QStyleOptionViewItem& option;
    const KeyedItem& item;

    const QPalette& palette() const { return option.palette; }
    const QRect& row() const { return option.rect; }
    bool isHovered() const { return item.enabled && (option.state & QStyle::State_MouseOver); }
    bool isChosen() const { return option.state & QStyle::State_Selected; }
    bool hasFocus() const { return option.state & QStyle::State_HasFocus; }
    QColor text() const {
        return palette().color(item.enabled ? QPalette::Active : QPalette::Disabled,
                               QPalette::Text);
    }
    void draw(const QRect& place, int flags, const QString& text, Qt::TextElideMode elide) const {
        const QString line = painter.fontMetrics().elidedText(OneLine(text), elide, place.width());
        painter.drawText(place, flags | Qt::AlignVCenter | Qt::TextSingleLine, line);
    }
};

PanelDelegate::PanelDelegate(PanelModel* model, QObject* parent)
    : QStyledItemDelegate(parent), m_model(model) {}

void PanelDelegate::measure(const QFont& font) {
    const QFontMetrics metrics(font);
    m_captionFont = font;
    m_captionWidth = 0;
    m_gutter = 0;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const KeyedItem& item = m_model->itemAt(m_model->index(row, 0));
        if (HasColumns(item.kind))
            m_captionWidth =
                qMax(m_captionWidth, metrics.horizontalAdvance(ShownCaption(item.caption)));
        if (item.kind == ItemKind::Browse)
            m_gutter = qMax(m_gutter, ButtonWidth);
        else if (IsField(item.kind))
            m_gutter = qMax(m_gutter, ArrowSide + 4);
    }
}

QFont PanelDelegate::valueFont(const KeyedItem& item, const QFont& font) const {
    QFont value = theme::TabularFont(font);
    if (prominent.contains(item.key)) {
        value.setWeight(QFont::DemiBold);
        if (value.pointSizeF() > 0)
            value.setPointSizeF(value.pointSizeF() * 1.4);
        else
            value.setPixelSize(qRound(value.pixelSize() * 1.4));
    }
    return value;
}

QRect PanelDelegate::valueRect(const KeyedItem& item, const QRect& row) const {
    const int most = (row.width() - 2 * Inset) / 2;
    // Values on the right line up there and may reach up to their own caption.
    const int caption =
        valueAlignment & Qt::AlignRight
            ? QFontMetrics(m_captionFont).horizontalAdvance(ShownCaption(item.caption))
            : m_captionWidth;
    const int left = row.left() + Inset + qMin(caption, most) + theme::Step;
    const int right = row.right() - Inset + FieldPad;
    if (!HasColumns(item.kind))
        return row.adjusted(WashInset, 0, -WashInset, 0);
    return QRect(QPoint(left, row.top() + 1), QPoint(right, row.bottom() - 1));
}

QRect PanelDelegate::textRect(const KeyedItem& item, const QRect& row) const {
    return valueRect(item, row).adjusted(FieldPad, 0, -FieldPad - m_gutter, 0);
}

QRect PanelDelegate::buttonRect(const QRect& row) const {
    const int right = row.right() - Inset + FieldPad - 1;
    return {right - ButtonWidth + 1, row.top() + 3, ButtonWidth, row.height() - 6};
}

bool PanelDelegate::isElided(const KeyedItem& item, const QRect& row, const QFont& font) const {
    if (!HasColumns(item.kind))
        return false;
    const QString value = OneLine(item.value);
    return value != item.value || QFontMetrics(valueFont(item, font)).horizontalAdvance(value) >
                                      textRect(item, row).width();
}

QSize PanelDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const KeyedItem& item = m_model->itemAt(index);
    if (item.kind == ItemKind::Separator)
        return {1, theme::Step * 2 + 1};
    const int least =
        item.kind == ItemKind::Heading && index.row() > 0 ? theme::RowHeight + 6 : theme::RowHeight;
    const int text = QFontMetrics(valueFont(item, option.font)).height() + 8;
    return {1, qMax(least, text)};
}

void PanelDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const KeyedItem& item = m_model->itemAt(index);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(option.font);
    const Brush brush{*painter, option, item};
    if (item.kind == ItemKind::Separator) {
        painter->fillRect(QRect(option.rect.left() + Inset, option.rect.center().y(),
                                option.rect.width() - 2 * Inset, 1),
                          theme::Hairline(option.palette));
    } else {
        if (!item.key.isEmpty())
            paintBackground(brush);
        if (item.kind == ItemKind::Heading) {
            paintHeading(brush);
        } else if (item.kind == ItemKind::Check || item.kind == ItemKind::Choice) {
            paintMark(brush);
        } else if (item.kind == ItemKind::Button || item.kind == ItemKind::SubMenu) {
            paintCommand(brush);
        } else {
            paintCaption(brush);
            if (item.kind == ItemKind::Progress) {
                paintProgress(brush);
            } else {
                paintField(brush);
                paintValue(brush);
            }
        }
    }
    painter->restore();
}

void PanelDelegate::paintBackground(const Brush& brush) const {
    const QRectF place = QRectF(brush.row()).adjusted(WashInset, 0.5, -WashInset, -0.5);
    if (brush.isChosen()) {
        QColor chosen = brush.palette().color(QPalette::Highlight);
        chosen.setAlphaF(theme::IsDark(brush.palette()) ? 0.30F : 0.13F);
        brush.painter.setPen(Qt::NoPen);
        brush.painter.setBrush(chosen);
        brush.painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    } else if (brush.isHovered()) {
        brush.painter.setPen(Qt::NoPen);
        brush.painter.setBrush(theme::Wash(brush.palette(), 0.05));
        brush.painter.drawRoundedRect(place, theme::Radius, theme::Radius);
    }
    if (brush.hasFocus()) {
        brush.painter.setPen(QPen(brush.palette().color(QPalette::Highlight), 1.5));
        brush.painter.setBrush(Qt::NoBrush);
        brush.painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), theme::Radius,
                                      theme::Radius);
    }
}

void PanelDelegate::paintHeading(const Brush& brush) const {
    QFont heading = brush.option.font;
    heading.setWeight(QFont::DemiBold);
    brush.painter.setFont(heading);
    brush.painter.setPen(brush.text());
    const QRect place = brush.row().adjusted(Inset, 0, -Inset, -2);
    const int valueWidth =
        brush.item.value.isEmpty()
            ? 0
            : qMin(place.width() / 2,
                   brush.painter.fontMetrics().horizontalAdvance(OneLine(brush.item.value)) + 1);
    const int gap = valueWidth > 0 ? theme::Margin : 0;
    brush.draw(place.adjusted(0, 0, -valueWidth - gap, 0), Qt::AlignLeft | Qt::AlignBottom,
               ShownCaption(brush.item.caption), Qt::ElideMiddle);
    if (valueWidth > 0)
        brush.draw(QRect(place.right() - valueWidth + 1, place.top(), valueWidth, place.height()),
                   Qt::AlignRight, brush.item.value, Qt::ElideMiddle);
    brush.painter.fillRect(QRect(place.left(), brush.row().bottom(), place.width(), 1),
                           theme::Hairline(brush.palette()));
}

void PanelDelegate::paintCaption(const Brush& brush) const {
    brush.painter.setPen(brush.item.enabled ? theme::SecondaryText(brush.palette()) : brush.text());
    const QRect place(QPoint(brush.row().left() + Inset, brush.row().top()),
                      QPoint(valueRect(brush.item, brush.row()).left() - 1, brush.row().bottom()));
    brush.draw(place, Qt::AlignLeft, ShownCaption(brush.item.caption), Qt::ElideRight);
}

void PanelDelegate::paintValue(const Brush& brush) const {
    brush.painter.setFont(valueFont(brush.item, brush.option.font));
    brush.painter.setPen(brush.item.enabled ? theme::ValueColor(brush.item.role, brush.palette())
                                            : brush.text());
    brush.draw(textRect(brush.item, brush.row()), static_cast<int>(valueAlignment),
               brush.item.value, Qt::ElideMiddle);
}

void PanelDelegate::paintField(const Brush& brush) const {
    if (!IsField(brush.item.kind) || !brush.item.enabled)
        return;
    const QRect field = valueRect(brush.item, brush.row());
    QPainter& painter = brush.painter;
    if (brush.isHovered() || brush.hasFocus()) {
        painter.setPen(QPen(theme::Wash(brush.palette(), 0.30), 1));
        painter.setBrush(brush.palette().color(QPalette::Base));
        painter.drawRoundedRect(QRectF(field).adjusted(0.5, 1.5, -0.5, -1.5), theme::Radius,
                                theme::Radius);
    }
    const double ratio = painter.device()->devicePixelRatioF();
    const QColor ink = theme::SecondaryText(brush.palette());
    if (brush.item.kind == ItemKind::DropDown) {
        const QRect arrow(field.right() - FieldPad - ArrowSide + 3,
                          field.center().y() - ArrowSide / 2 + 1, ArrowSide, ArrowSide);
        painter.drawPixmap(arrow, theme::IconPixmap(QStringLiteral("down"), ArrowSide, ink, ratio));
    } else if (brush.item.kind == ItemKind::Browse) {
        const QRect button = buttonRect(brush.row());
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::Wash(brush.palette(), brush.isHovered() ? 0.14 : 0.08));
        painter.drawRoundedRect(button, theme::Radius - 1, theme::Radius - 1);
        painter.setBrush(brush.text());
        for (const int dot : {-5, 0, 5})
            painter.drawEllipse(QRectF(button).center() + QPointF(dot, 0), 1.2, 1.2);
    } else if (brush.isHovered() || brush.hasFocus()) {
        const QRect pen(field.right() - FieldPad - ArrowSide + 3,
                        field.center().y() - ArrowSide / 2 + 1, ArrowSide, ArrowSide);
        painter.drawPixmap(pen, theme::IconPixmap(QStringLiteral("edit"), ArrowSide, ink, ratio));
    }
}

void PanelDelegate::paintMark(const Brush& brush) const {
    const QRect place(brush.row().left() + Inset, brush.row().center().y() - MarkSide / 2 + 1,
                      MarkSide, MarkSide);
    const MarkShape shape = brush.item.kind == ItemKind::Check ? MarkShape::Box : MarkShape::Dot;
    PaintMark(brush.painter, place,
              {shape, brush.item.ticked, brush.item.enabled, brush.isHovered()}, brush.palette());
    brush.painter.setPen(brush.text());
    brush.draw(brush.row().adjusted(Inset + MarkSide + theme::Step + 2, 0, -Inset, 0),
               Qt::AlignLeft, ShownCaption(brush.item.caption), Qt::ElideRight);
}

void PanelDelegate::paintCommand(const Brush& brush) const {
    int left = brush.row().left() + Inset;
    const QIcon icon = theme::Icon(brush.item.image);
    if (!icon.isNull()) {
        icon.paint(&brush.painter, QRect(left, brush.row().center().y() - 9, 18, 18),
                   Qt::AlignCenter, brush.item.enabled ? QIcon::Normal : QIcon::Disabled);
        left += 18 + theme::Step;
    }
    brush.painter.setPen(brush.text());
    brush.draw(QRect(QPoint(left, brush.row().top()),
                     QPoint(brush.row().right() - Inset, brush.row().bottom())),
               Qt::AlignLeft, ShownCaption(brush.item.caption), Qt::ElideRight);
}

void PanelDelegate::paintProgress(const Brush& brush) const {
    const QRect column = valueRect(brush.item, brush.row());
    const QRectF groove(column.left() + FieldPad, column.center().y() - 2,
                        column.width() - 2 * FieldPad, 6);
    const double share = qBound(0.0, brush.item.value.toDouble() / 100.0, 1.0);
    brush.painter.setPen(Qt::NoPen);
    brush.painter.setBrush(theme::Wash(brush.palette(), 0.12));
    brush.painter.drawRoundedRect(groove, 3, 3);
    if (share > 0) {
        QRectF done = groove;
        done.setWidth(qMax(groove.height(), groove.width() * share));
        brush.painter.setBrush(brush.palette().color(QPalette::Highlight));
        brush.painter.drawRoundedRect(done, 3, 3);
    }
}

QWidget* PanelDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    const KeyedItem& item = m_model->itemAt(index);
    auto* editor = new QLineEdit(parent);
    editor->setObjectName(item.key);
    editor->setAccessibleName(ShownCaption(item.caption));
    editor->setAlignment(valueAlignment | Qt::AlignVCenter);
    editor->setFont(theme::TabularFont(option.font));
    return editor;
}

void PanelDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    // A refill comes here too; it doesn't take away what was typed.
    auto* line = static_cast<QLineEdit*>(editor);
    const QString value = m_model->itemAt(index).value;
    if (line->isModified() || line->text() == value)
        return;
    line->setText(value);
    line->selectAll();
}

void PanelDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                 const QModelIndex& index) const {
    const QString text = static_cast<QLineEdit*>(editor)->text();
    const KeyedItem& item = m_model->itemAt(index);
    if (text != item.value)
        m_model->items()->edit(QString(item.key), text); // a copy: the item may go meanwhile
}

void PanelDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    editor->setGeometry(valueRect(m_model->itemAt(index), option.rect));
}

} // namespace kelvrane
