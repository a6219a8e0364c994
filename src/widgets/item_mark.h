// A check box or a choice as the program draws it: mark, icon, word. The tick is the model's; a
// click doesn't change it by itself.
//
//     auto* check = new ItemMark<QCheckBox, MarkShape::Box>(parent);
#pragma once

#include "widgets/captions.h"
#include "widgets/mark_painter.h"
#include "widgets/theme.h"

#include <QEvent>
#include <QIcon>
#include <QPainter>

namespace kelvrane {

inline constexpr int ItemMarkFocusRoom = 8; ///< left of a mark, for the ring of the focus
inline constexpr int ItemMarkIconSide = 20;

/// A check or choice whose tick is the item's.
template <typename Button, MarkShape shape>
class ItemMark final : public Button {
  public:
    explicit ItemMark(QWidget* parent) : Button(parent) {
        this->setAutoExclusive(false);
        this->setAttribute(Qt::WA_Hover);
        this->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        const int word = this->fontMetrics().horizontalAdvance(ShownCaption(this->text()));
        return {textLeft() + word + 2,
                qMax(theme::RowHeight, this->fontMetrics().height() + theme::Step)};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void nextCheckState() override {}
    bool hitButton(const QPoint& position) const override {
        return this->rect().contains(position);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool lit = this->isEnabled() && this->underMouse();
        if (this->hasFocus()) {
            painter.setPen(QPen(this->palette().color(QPalette::Highlight), 1.5));
            painter.drawRoundedRect(QRectF(this->rect()).adjusted(1, 1, -1, -1), theme::Radius,
                                    theme::Radius);
        }
        const int middle = this->height() / 2;
        PaintMark(painter, QRect(ItemMarkFocusRoom, middle - MarkSide / 2, MarkSide, MarkSide),
                  {shape, this->isChecked(), this->isEnabled(), lit}, this->palette());
        this->icon().paint(&painter, ItemMarkFocusRoom + MarkSide + theme::Step,
                           middle - ItemMarkIconSide / 2, ItemMarkIconSide, ItemMarkIconSide,
                           Qt::AlignCenter, this->isEnabled() ? QIcon::Normal : QIcon::Disabled);
        const auto group = this->isEnabled() ? QPalette::Active : QPalette::Disabled;
        painter.setPen(this->palette().color(group, QPalette::WindowText));
        const QRect place = this->rect().adjusted(textLeft(), 0, 0, 0);
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         this->fontMetrics().elidedText(ShownCaption(this->text()), Qt::ElideRight,
                                                        place.width()));
    }

  private:
    int textLeft() const {
        const int icon = this->icon().isNull() ? 0 : ItemMarkIconSide + theme::Step;
        return ItemMarkFocusRoom + MarkSide + theme::Step + 2 + icon;
    }
};

} // namespace kelvrane
