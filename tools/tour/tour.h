// The tour's tools: a scripted clock, timers that follow it, pictures of screens in light and dark,
// and answers to the boxes that come up.
#pragma once

#include "platform/ports.h"

#include <QList>
#include <QPalette>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>

class QWidget;

namespace kelvrane::tour {

class TourClock final : public Clock {
  public:
    QDateTime now() const override { return m_now; }
    void set(const QDateTime& now) { m_now = now; }

  private:
    QDateTime m_now;
};

/// Timers that fire as the scripted clock passes.
class TourTimers final : public Timers {
  public:
    explicit TourTimers(TourClock& clock) : m_clock(clock) {}
    IntervalTimer* create(QObject* parent) override;
    /// Lets the clock run, in steps of ten seconds.
    void pass(int minutes);

  private:
    TourClock& m_clock;
    QList<QObject*> m_timers;
};

class Album {
  public:
    explicit Album(QString folder);

    /// Two numbered pictures, "07-running-light.png" and "07-running-dark.png".
    void picture(const QString& name, QWidget* window);
    /// What a box gets: a picture of that name, then the button with this text.
    struct Answer {
        QString name;
        QString button;
    };
    /// Runs the call, in which these boxes come up one after the other and are answered.
    void withBoxes(const QList<Answer>& answers, const std::function<void()>& call);

    const QStringList& files() const { return m_files; }
    /// Whether every picture was taken, and no box came that nobody expected; such a one is closed.
    bool isWhole() const { return m_isWhole; }

  private:
    void grab(const QString& name, QWidget* window, const QPalette& palette);
    void answer(QWidget* box);
    void takeBox();
    void complain(const QString& text);

    QString m_folder;
    QPalette m_light, m_dark;
    int m_number = 0;
    QList<Answer> m_answers;
    QPointer<QWidget> m_answered; ///< the box that is being dealt with
    QTimer m_poll;
    bool m_isWhole = true;
    QStringList m_files;
};

QPalette LightPalette();
QPalette DarkPalette();

} // namespace kelvrane::tour
