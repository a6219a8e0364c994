// The start-up trace for support: lines that only exist while DebugMode is on.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace kelvrane {

/// The lines of the debug window, oldest first. Cleared when the window goes.
class TraceLines : public QObject {
    Q_OBJECT
  public:
    const QStringList& lines() const { return m_lines; }
    void append(const QString& line);
    void clear();

  signals:
    void Appended(const QString& line);

  private:
    QStringList m_lines;
};

TraceLines& Trace();

/// When DebugMode: shows the debug window if it isn't loaded, appends the text to it and lets it
/// repaint. Otherwise nothing.
void LogStep(const QString& text);

/// Puts the lines on the clipboard, newest first, each followed by a line feed.
void CopyTrace();

} // namespace kelvrane
