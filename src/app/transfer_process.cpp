#include "app/transfer_process.h"

#include "frame/error_report.h"
#include "platform/installed_files.h"

#include <QFile>
#include <QScopedValueRollback>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelvrane {

namespace {

constexpr qint64 largestText = 64 * 1024;
constexpr qint64 largestFile = qint64(1024) * 1024 * 1024;
constexpr qsizetype longestLine = 8 * 1024;

/// The request as the helper reads it; empty when a value doesn't fit on a line.
QByteArray requestLines(const InternetRequest& request, const TransferSettings& settings) {
    const std::pair<const char*, QByteArray> fields[] = {
        {"url", request.address.toUtf8()},
        {"account", request.account.toUtf8()},
        {"password", request.password.toUtf8()},
        {"agent", request.agent.toUtf8()},
        {"file", QFile::encodeName(request.file)},
        {"certificates", QFile::encodeName(settings.certificates)},
        {"limit", QByteArray::number(request.file.isEmpty() ? largestText : largestFile)},
        {"connect-seconds", QByteArray::number(settings.connectSeconds)},
        {"stall-seconds", QByteArray::number(settings.stallSeconds)},
        {"total-seconds", QByteArray::number(request.quiet ? settings.quietSeconds : 0)},
    };
    QByteArray lines;
    for (const auto& [key, value] : fields) {
        if (std::ranges::any_of(value, [](char byte) { return byte >= 0 && byte < ' '; }))
            return {};
        lines += key + QByteArray(" ") + value + '\n';
    }
    return lines + "go\n";
}

} // namespace

TransferProcess::TransferProcess(const InternetRequest& request, Internet::OnStatus onStatus,
                                 Internet::OnResult onResult, QObject* parent)
    : QObject(parent), m_request(request), m_onStatus(std::move(onStatus)),
      m_onResult(std::move(onResult)) {
    m_stall.setSingleShot(true);
    connect(&m_stall, &QTimer::timeout, this, [this] { end(internet_errors::TimedOut); });
}

TransferProcess::~TransferProcess() {
    stop();
    if (m_helper.state() != QProcess::NotRunning)
        m_helper.waitForFinished(); // it can't refuse
}

void TransferProcess::cancel() {
    stop();
    leave();
}

void TransferProcess::stop() {
    m_ended = true;
    m_stall.stop();
    m_helper.disconnect(this);
    m_helper.kill();
}

/// While it reads, a status may be letting events through, and they would delete it under its feet.
void TransferProcess::leave() {
    if (!m_reading)
        deleteLater();
}

void TransferProcess::start(const TransferSettings& settings) {
    if (m_ended)
        return;
    const QByteArray lines = requestLines(m_request, settings);
    const QString program = InstalledFile(QStringLiteral("kelvrane-transfer"));
    if (lines.isEmpty() || program.isEmpty()) {
        end(lines.isEmpty() ? internet_errors::BadAddress : internet_errors::InternalError);
        return;
    }
    connect(&m_helper, &QProcess::readyReadStandardOutput, this, &TransferProcess::read);
    connect(&m_helper, &QProcess::finished, this, &TransferProcess::read);
    connect(&m_helper, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(internet_errors::InternalError);
    });
    m_helper.setStandardErrorFile(QProcess::nullDevice());
    m_helper.start(program, QStringList());
    // Left open: its end tells the helper that nobody waits any more.
    m_helper.write(lines);
    // The helper watches the server; this watches the helper. A file may take its time to get to a
    // slow disk at the end.
    if (m_request.file.isEmpty())
        m_stall.start(std::chrono::seconds(settings.stallSeconds));
}

void TransferProcess::read() {
    if (m_reading || m_ended)
        return;
    if (m_stall.isActive())
        m_stall.start();
    {
        const QScopedValueRollback<bool> reading(m_reading, true);
        do
            m_unread += m_helper.readAllStandardOutput();
        while (m_textLength ? takeText() : takeLine());
    }
    if (m_ended)
        leave();
    else if (m_done)
        end(m_result.error);
    else if (m_helper.state() == QProcess::NotRunning || m_unread.size() > 2 * largestText)
        end(internet_errors::InternalError); // it broke off, or talks nonsense
}

bool TransferProcess::takeLine() {
    const qsizetype length = m_unread.left(longestLine).indexOf('\n');
    if (length < 0)
        return false;
    const QByteArray line = m_unread.left(length);
    m_unread.remove(0, length + 1);
    const qsizetype blank = std::max<qsizetype>(line.indexOf(' '), 0);
    const QByteArray kind = line.left(blank);
    const QByteArray fields = line.mid(blank + 1);
    if (kind == "status")
        takeStatus(fields);
    else if (kind == "verified")
        m_result.verified = fields == "1";
    else if (kind == "text")
        m_textLength = std::clamp<qsizetype>(fields.toLongLong(), 0, largestText);
    else if (kind == "done")
        takeDone(fields);
    return !m_done && !m_ended;
}

bool TransferProcess::takeText() {
    if (m_unread.size() < *m_textLength)
        return false;
    m_result.text = m_unread.left(*m_textLength);
    m_unread.remove(0, *m_textLength);
    m_textLength.reset();
    return true;
}

void TransferProcess::takeStatus(const QByteArray& fields) {
    const QByteArrayList parts = fields.split(' ');
    if (!m_onStatus || parts.size() < 4)
        return;
    const InternetStatus status = {.code = parts[0].toInt(),
                                   .text = QString::fromUtf8(parts.sliced(3).join(' ')),
                                   .number = parts[1].toDouble(),
                                   .total = parts[2].toDouble()};
    Guarded(QStringLiteral("Internet"), [&] { m_onStatus(status); });
}

void TransferProcess::takeDone(const QByteArray& fields) {
    const qsizetype blank = fields.indexOf(' ');
    bool isNumber = false;
    const int error = fields.left(blank).toInt(&isNumber);
    m_result.error = isNumber ? error : internet_errors::InternalError;
    m_result.response = blank < 0 ? QString() : QString::fromUtf8(fields.mid(blank + 1));
    m_done = true;
}

void TransferProcess::end(int error) {
    if (std::exchange(m_ended, true))
        return;
    m_stall.stop();
    if (!m_done)
        stop(); // whatever it still says or does
    m_result.error = error;
    if (error != 0) {
        m_result.text.clear();
        m_result.verified = false;
    }
    leave();
    Guarded(QStringLiteral("Internet"),
            [answer = std::move(m_onResult), result = m_result] { answer(result); });
}

} // namespace kelvrane
