// Panel 1 of the control screen's status bar, as a text that lives with the process.
#pragma once

#include <QObject>
#include <QString>

namespace kelvrane {

class StatusText : public QObject {
    Q_OBJECT
  public:
    const QString& text() const { return m_text; }
    void setText(const QString& text);

  signals:
    void Changed(const QString& text);

  private:
    QString m_text;
};

/// The one status text.
StatusText& Status();

/// Puts the text in panel 1 when ControlScreenLoaded; otherwise does nothing.
void SetStatusText(const QString& text);

} // namespace kelvrane
