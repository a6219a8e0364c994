// One run of the helper program: hands it a request, reads its lines.
#pragma once

#include "app/transfer_internet.h"

#include <QByteArray>
#include <QProcess>
#include <QTimer>

#include <optional>

namespace kelvrane {

class TransferProcess : public QObject {
    Q_OBJECT
  public:
    TransferProcess(const InternetRequest& request, Internet::OnStatus onStatus,
                    Internet::OnResult onResult, QObject* parent);
    ~TransferProcess() override;

    /// Starts the helper. The result comes later in every case, and then the object goes.
    void start(const TransferSettings& settings);
    /// Nothing is heard of it again, and it goes once it is nowhere up the stack.
    void cancel();

  private:
    void stop();
    void leave();
    void read();
    bool takeLine();
    bool takeText();
    void takeStatus(const QByteArray& fields);
    void takeDone(const QByteArray& fields);
    void end(int error);

    InternetRequest m_request;
    Internet::OnStatus m_onStatus;
    Internet::OnResult m_onResult;
    QProcess m_helper;
    QTimer m_stall; ///< since the helper was last heard
    QByteArray m_unread;
    std::optional<qsizetype> m_textLength; ///< bytes of a text that come next
    InternetResult m_result;
    bool m_done = false;    ///< the helper said its last line
    bool m_ended = false;   ///< and so did this
    bool m_reading = false; ///< a status lets events through, which may bring more to read
};

} // namespace kelvrane
