#include "widgets/flat_button.h"

#include "widgets/captions.h"
#include "widgets/theme.h"

#include <QMenu>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr int IconSide = 20;
constexpr int Pad = 8;
constexpr int ArrowSide = 12; // of a button that opens a menu

} // namespace

FlatButton::FlatButton(QWidget* parent) : QToolButton(parent) {
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setIconSize({IconSide, IconSide});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void FlatButton::setCaption(const QString& caption) {
    m_caption = ShownCaption(caption).trimmed();
    setAccessibleName(m_caption);
    updateToolTip();
    updateGeometry();
    update();
}

void FlatButton::setWordShown(bool shown) {
    if (m_wordShown == shown)
        return;
    m_wordShown = shown;
    updateToolTip();
    updateGeometry();
    update();
}

void FlatButton::setContentAlignment(Qt::Alignment alignment) {
    m_alignment = alignment;
    update();
}

void FlatButton::setHint(const QString& hint) {
    m_hint = hint;
    setAccessibleDescription(hint);
    updateToolTip();
}

void FlatButton::setOpensList(bool opens) {
    m_opensList = opens;
    updateGeometry();
    update();
}

void FlatButton::updateToolTip() {
    const bool wordIsNews = !m_wordShown && !m_caption.isEmpty() && m_caption != m_hint;
    QString tip = m_hint;
    if (wordIsNews)
        tip = m_hint.isEmpty() ? m_caption : m_caption + QLatin1Char('\n') + m_hint;
    setToolTip(tip);
}

int FlatButton::widthWith(bool word) const {
    const bool hasWord = word && !m_caption.isEmpty();
    int width = 2 * Pad;
    if (!icon().isNull())
        width += iconSize().width() + (hasWord ? theme::Step : 0);
    if (hasWord)
        width += fontMetrics().horizontalAdvance(m_caption) + 2;
    return hasArrow() ? width + ArrowSide : width;
}

QSize FlatButton::sizeHint() const {
    return {widthWith(m_wordShown || icon().isNull()),
            qMax(iconSize().height() + 12, fontMetrics().height() + 12)};
}

void FlatButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);

    const bool pressed = isDown();
    const bool lit = isEnabled() && (underMouse() || pressed || isChecked());
    if (lit) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::Wash(palette(), pressed ? 0.14 : isChecked() ? 0.10 : 0.07));
        painter.drawRoundedRect(frame, theme::Radius, theme::Radius);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame, theme::Radius, theme::Radius);
    }

    const bool hasWord = (m_wordShown || icon().isNull()) && !m_caption.isEmpty();
    const int wanted = widthWith(hasWord) - 2 * Pad;
    int left = Pad;
    if (m_alignment & Qt::AlignHCenter)
        left = qMax(Pad, (width() - wanted) / 2);
    if (!icon().isNull()) {
        const QRect place(left, (height() - iconSize().height()) / 2, iconSize().width(),
                          iconSize().height());
        icon().paint(&painter, place, Qt::AlignCenter,
                     isEnabled() ? QIcon::Normal : QIcon::Disabled);
        left = place.right() + 1 + theme::Step;
    }
    if (hasWord) {
        const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
        painter.setPen(palette().color(group, QPalette::WindowText));
        const int arrow = hasArrow() ? ArrowSide : 0;
        const QRect place(left, 0, width() - left - Pad - arrow + 2, height());
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         fontMetrics().elidedText(m_caption, Qt::ElideRight, place.width()));
    }
    if (hasArrow()) {
        const QRect place(width() - Pad - ArrowSide + 4, (height() - ArrowSide) / 2 + 1, ArrowSide,
                          ArrowSide);
        theme::Icon(QStringLiteral("down"))
            .paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }
}

} // namespace kelvrane
