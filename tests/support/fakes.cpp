#include "support/fakes.h"

#include "frame/globals.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "frame/trace.h"
#include "frame/tray_menus.h"
#include "frame/waiting_questions.h"
#include "history/roll_up.h"
#include "platform/skip_errors.h"
#include "records/record_tables.h"
#include "records/selection_sinks.h"
#include "timekeeping/control_model.h"

#include <QBuffer>
#include <QFile>
#include <QPdfWriter>

#include <utility>

namespace kelvrane::testing {

namespace {
QDateTime momentOf(const QString& text) {
    const QDateTime moment =
        QDateTime::fromString(text, text.size() > 16 ? QStringLiteral("yyyy-MM-dd hh:mm:ss")
                                                     : QStringLiteral("yyyy-MM-dd hh:mm"));
    EXPECT_TRUE(moment.isValid()) << text.toStdString();
    return moment;
}
} // namespace

void FakeClock::set(const QString& text) {
    const qint64 seconds = m_now.secsTo(momentOf(text));
    seconds >= 0 ? pass(seconds) : jump(seconds);
    m_now = momentOf(text);
}

void FakeClock::pass(qint64 seconds) {
    sleep(seconds);
    m_awake += seconds * 1000;
}

void FakeClock::sleep(qint64 seconds) {
    jump(seconds);
    m_boot += seconds * 1000;
}

void FakeClock::sleepUntil(const QString& text) {
    sleep(m_now.secsTo(momentOf(text)));
}

void FakeClock::jump(qint64 seconds) {
    m_now = m_now.addSecs(seconds);
}

void FakeDialogs::expect(const QString& part, BoxAnswer answer) {
    m_expected.append({part, answer});
}

BoxAnswer FakeDialogs::ask(const Box& box) {
    shown.append(box);
    if (whileOpen)
        whileOpen(box);
    if (m_expected.isEmpty()) {
        if (strict)
            ADD_FAILURE() << "unexpected box: " << box.title.toStdString() << ": "
                          << box.text.toStdString();
        return box.buttons == BoxButtons::YesNo ? BoxAnswer::No
               : box.buttons == BoxButtons::Ok  ? BoxAnswer::Ok
                                                : BoxAnswer::Cancel;
    }
    const auto [part, answer] = m_expected.takeFirst();
    EXPECT_TRUE(box.text.contains(part) || box.title.contains(part))
        << "expected: " << part.toStdString() << ", shown: " << box.title.toStdString() << ": "
        << box.text.toStdString();
    return answer;
}

std::optional<QString> FakeDialogs::openFile(const FileQuestion& question) {
    fileQuestions.append(question);
    return m_files.isEmpty() ? std::nullopt : m_files.takeFirst();
}

FakeDialogs::~FakeDialogs() {
    for (const auto& expected : m_expected)
        ADD_FAILURE() << "box never shown: " << expected.first.toStdString();
}

void FakeScreens::show(Screen screen) {
    const bool first = !loaded.contains(screen);
    shown.append(screen);
    loaded.insert(screen);
    visible.insert(screen);
    if (first && onLoad)
        onLoad(screen);
}

void FakeScreens::unload(Screen screen) {
    unloaded.append(screen);
    visible.remove(screen);
    if (loaded.remove(screen) && onUnload)
        onUnload(screen);
}

bool FakePrinter::print(const QString& title,
                        const std::function<void(QPagedPaintDevice&)>& paint) {
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&document);
        paint(writer);
    }
    titles.append(title);
    documents.append(document.data());
    return true;
}

void FakeInternet::fetch(const InternetRequest& request, OnStatus onStatus, OnResult onResult) {
    requests.append(request);
    if (hangs)
        return;
    if (request.quiet)
        m_waiting.append([=, this] { answer(request, onStatus, onResult); });
    else
        answer(request, onStatus, onResult);
}

void FakeInternet::deliver() {
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& reply : waiting)
        reply();
}

void FakeInternet::answer(const InternetRequest& request, const OnStatus& onStatus,
                          const OnResult& onResult) {
    const Reply reply =
        replies.value(request.address, Reply{.error = internet_errors::CannotConnect});
    for (const InternetStatus& status : reply.statuses)
        if (onStatus)
            onStatus(status);
    if (reply.error == 0 && !request.file.isEmpty()) {
        QFile file(request.file);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::NewOnly));
        file.write(reply.bytes);
    }
    const bool isText = reply.error == 0 && request.file.isEmpty();
    onResult({.error = reply.error, .text = isText ? reply.bytes : QByteArray()});
}

QStringList FakeInternet::addresses() const {
    QStringList list;
    for (const InternetRequest& request : requests)
        list.append(request.address);
    return list;
}

bool FakeEvents::waitUntil(const std::function<bool()>& condition) {
    for (int turn = 0; turn < 100; ++turn) {
        if (condition())
            return true;
        yield();
    }
    return false;
}

IntervalTimer* FakeTimers::create(QObject* parent) {
    auto* timer = new FakeTimer;
    timer->setParent(parent);
    created.append(timer);
    return timer;
}

ProgramTest::ProgramTest() {
    globals = {};
    ResetRollUp();
    Questions().clear();
    SkippedErrors().clear();
    SetAppPath(folder.path());
    ports = {.clock = &clock,
             .files = &disk,
             .dialogs = &dialogs,
             .screens = &screens,
             .progress = &progress,
             .tray = &tray,
             .sound = &sound,
             .printer = &printer,
             .volumes = &volumes,
             .help = &help,
             .launcher = &launcher,
             .internet = &internet,
             .events = &events,
             .clipboard = &clipboard,
             .timers = &timers,
             .process = &process};
    installSettings();
    Control().reset();
    Menus().reset();
    Trace().clear();
    Status().setText({});
}

ProgramTest::~ProgramTest() {
    while (ProjectTable)
        CloseProjectTable();
    while (CustomerTable)
        CloseCustomerTable();
    selectionSinks = {};
    ResetRollUp(); // its timer is one of this test's
    globals = {};
    ports = {};
}

void ProgramTest::installSettings() {
    settings = std::make_unique<SettingsStore>(disk, path(QString::fromLatin1(files::Settings)));
    ports.settings = settings.get();
    for (const QString& key : {keys::Main, keys::RecentInfo, keys::SpreadSheetInfo})
        settings->createKey(key);
    ShowNumProjects = 5;
    EndOfDayTimeInterval = 15;
    StartWorkTime = QStringLiteral("8:00 AM");
    StopWorkTime = QStringLiteral("5:00 PM");
    AutoSave = QStringLiteral("On");
    TimeIncrements = QStringLiteral("15 Minutes");
    StartOfWeek = QStringLiteral("2");
    ProjectDatabase = path(QString::fromLatin1(files::ProjectDatabase));
}

QString ProgramTest::path(const QString& name) const {
    return folder.filePath(name);
}

QByteArray ProgramTest::fileBytes(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ProgramTest::writeFile(const QString& name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace kelvrane::testing
