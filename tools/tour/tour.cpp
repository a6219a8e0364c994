#include "tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMessageBox>

#include <cstdio>
#include <utility>

namespace kelvrane::tour {

namespace {

class TourTimer final : public IntervalTimer {
  public:
    using IntervalTimer::IntervalTimer;
    void setInterval(int milliseconds) override { m_interval = milliseconds; }
    int interval() const override { return m_interval; }
    void setEnabled(bool enabled) override {
        if (enabled && !m_enabled)
            m_passed = 0;
        m_enabled = enabled;
    }
    void pass(int milliseconds) {
        m_passed += milliseconds;
        if (!m_enabled || m_interval <= 0 || m_passed < m_interval)
            return;
        m_passed = 0;
        emit Timer();
    }

  private:
    int m_interval = 0;
    int m_passed = 0;
    bool m_enabled = false;
};

void settle() {
    for (int turn = 0; turn < 4; ++turn)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

QString bare(QString text) {
    return text.replace(QStringLiteral("&&"), QStringLiteral("\1"))
        .remove(QLatin1Char('&'))
        .replace(QLatin1Char('\1'), QLatin1Char('&'));
}

} // namespace

IntervalTimer* TourTimers::create(QObject* parent) {
    auto* timer = new TourTimer;
    timer->setParent(parent);
    m_timers.append(timer);
    QObject::connect(timer, &QObject::destroyed,
                     [this](QObject* gone) { m_timers.removeAll(gone); });
    return timer;
}

void TourTimers::pass(int minutes) {
    constexpr int step = 10;
    for (int seconds = 0; seconds < minutes * 60; seconds += step) {
        m_clock.set(m_clock.now().addSecs(step));
        const QList<QObject*> timers = m_timers;
        for (QObject* timer : timers)
            if (m_timers.contains(timer))
                static_cast<TourTimer*>(timer)->pass(step * 1000);
    }
}

QPalette LightPalette() {
    QPalette palette(QColor(0xf0, 0xf1, 0xf3));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf8, 0xfa));
    palette.setColor(QPalette::Window, QColor(0xf4, 0xf5, 0xf7));
    palette.setColor(QPalette::Highlight, QColor(0x3b, 0x78, 0xd8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette DarkPalette() {
    QPalette palette(QColor(0x2d, 0x30, 0x36), QColor(0x25, 0x28, 0x2d));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x20, 0x24));
    palette.setColor(QPalette::AlternateBase, QColor(0x24, 0x27, 0x2c));
    palette.setColor(QPalette::Highlight, QColor(0x4f, 0x8c, 0xea));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText,
                            QPalette::HighlightedText, QPalette::ToolTipText})
        palette.setColor(role, QColor(0xe6, 0xe8, 0xeb));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x86, 0x8e));
    palette.setColor(QPalette::ToolTipBase, QColor(0x2d, 0x30, 0x36));
    return palette;
}

Album::Album(QString folder)
    : m_folder(std::move(folder)), m_light(LightPalette()), m_dark(DarkPalette()) {
    QApplication::setPalette(m_light);
    QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] { takeBox(); });
    m_poll.start(10);
}

void Album::complain(const QString& text) {
    std::fprintf(stderr, "tour: %s\n", qPrintable(text));
    m_isWhole = false;
}

/// Whatever stands in the way of the rest; a tour that waits for an answer never ends.
void Album::takeBox() {
    QWidget* box = QApplication::activeModalWidget();
    if (!box || box == m_answered)
        return;
    if (!m_answers.isEmpty()) {
        m_answered = box;
        answer(box);
    } else if (auto* unexpected = qobject_cast<QMessageBox*>(box)) {
        m_answered = box;
        complain(QStringLiteral("a box that nobody expected: %1").arg(unexpected->text()));
        unexpected->reject();
    }
}

void Album::grab(const QString& name, QWidget* window, const QPalette& palette) {
    QApplication::setPalette(palette);
    settle();
    const QString file = name + QStringLiteral(".png");
    if (window->grab().save(m_folder + QLatin1Char('/') + file))
        m_files.append(file);
    else
        complain(QStringLiteral("%1 could not be written").arg(file));
}

void Album::picture(const QString& name, QWidget* window) {
    if (!window) {
        complain(QStringLiteral("there is no window for %1").arg(name));
        return;
    }
    const QString numbered = QStringLiteral("%1-").arg(++m_number, 2, 10, QLatin1Char('0')) + name;
    grab(numbered + QStringLiteral("-light"), window, m_light);
    grab(numbered + QStringLiteral("-dark"), window, m_dark);
    QApplication::setPalette(m_light);
    settle();
}

void Album::answer(QWidget* box) {
    const Answer answer = m_answers.takeFirst();
    picture(answer.name, box);
    for (QAbstractButton* button : box->findChildren<QAbstractButton*>())
        if (bare(button->text()) == answer.button) {
            button->click();
            return;
        }
    complain(QStringLiteral("%1 has no button %2").arg(answer.name, answer.button));
    box->close();
}

void Album::withBoxes(const QList<Answer>& answers, const std::function<void()>& call) {
    m_answers = answers;
    call();
    settle();
    for (const Answer& unused : std::exchange(m_answers, {}))
        complain(QStringLiteral("the box %1 never came").arg(unused.name));
}

} // namespace kelvrane::tour
