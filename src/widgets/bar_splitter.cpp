#include "widgets/bar_splitter.h"

#include "widgets/theme.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr int keyStep = 12;

/// Quiet until the pointer or the focus is on it; arrow keys move it.
class Bar : public QSplitterHandle {
  public:
    Bar(Qt::Orientation orientation, QSplitter* splitter) : QSplitterHandle(orientation, splitter) {
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setAccessibleName(QStringLiteral("Movable bar"));
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        const bool lit = hasFocus() || underMouse();
        painter.setBrush(lit ? palette().color(QPalette::Highlight) : theme::Hairline(palette()));
        constexpr int length = 30;
        constexpr int thickness = 3;
        QRect grip(0, 0, thickness, length);
        if (orientation() == Qt::Vertical)
            grip = grip.transposed();
        grip.moveCenter(rect().center());
        painter.drawRoundedRect(grip, thickness / 2.0, thickness / 2.0);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool across = orientation() == Qt::Horizontal;
        const int back = across ? Qt::Key_Left : Qt::Key_Up;
        const int forth = across ? Qt::Key_Right : Qt::Key_Down;
        if (event->key() != back && event->key() != forth)
            return QSplitterHandle::keyPressEvent(event);
        const int by = event->key() == back ? -keyStep : keyStep;
        moveSplitter((across ? x() : y()) + by);
    }

    void focusInEvent(QFocusEvent* event) override {
        QSplitterHandle::focusInEvent(event);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        QSplitterHandle::focusOutEvent(event);
        update();
    }
};

} // namespace

BarSplitter::BarSplitter(Qt::Orientation orientation, Place place, QWidget* parent)
    : QSplitter(orientation, parent), m_place(std::move(place)) {
    setChildrenCollapsible(false);
    setHandleWidth(theme::Step + 2);
    connect(this, &QSplitter::splitterMoved, this, [this] {
        emit Moved(sizes().value(0), space());
        this->place();
    });
}

int BarSplitter::space() const {
    return (orientation() == Qt::Horizontal ? width() : height()) - handleWidth();
}

void BarSplitter::place() {
    if (count() != 2 || widget(0)->isHidden() || widget(1)->isHidden() || space() <= 0)
        return;
    const int first = m_place(space());
    if (sizes().value(0) != first)
        setSizes({first, space() - first});
}

void BarSplitter::resizeEvent(QResizeEvent* event) {
    QSplitter::resizeEvent(event);
    place();
}

void BarSplitter::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    place();
}

bool BarSplitter::event(QEvent* event) {
    const bool done = QSplitter::event(event);
    if (event->type() == QEvent::LayoutRequest)
        place();
    return done;
}

QSplitterHandle* BarSplitter::createHandle() {
    return new Bar(orientation(), this);
}

} // namespace kelvrane
