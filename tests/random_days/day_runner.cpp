#include "random_days/day_runner.h"

#include "frame/globals.h"
#include "frame/tray_menus.h"
#include "frame/waiting_questions.h"
#include "platform/recordset.h"
#include "platform/skip_errors.h"
#include "records/selection_sinks.h"
#include "startup/database_schema.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/modify_entry.h"
#include "timekeeping/modify_model.h"
#include "timekeeping/shut_down.h"
#include "tray/minute_tick.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <ctime>
#include <sys/stat.h>
#include <utility>

namespace kelvrane::testing {

namespace {

constexpr int tickSeconds = 10;
const QString historyName = QStringLiteral("DayInfo.mdb");
const QString otherName = QStringLiteral("another program");
const QString nightAnswers[] = {QStringLiteral("Start it again now"),
                                QStringLiteral("Count the night"), QStringLiteral("Leave it")};

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void setZone(const QByteArray& zone) {
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    ::tzset();
}

QDate dateOf(int date) {
    return QDate(1970, 1, 1).addDays(date);
}

QString clockText(int minute) {
    const int hour = minute / 60 % 24;
    return QStringLiteral("%1:%2 %3")
        .arg(hour % 12 == 0 ? 12 : hour % 12)
        .arg(minute % 60, 2, 10, QLatin1Char('0'))
        .arg(QLatin1String(hour < 12 ? "AM" : "PM"));
}

QString spanText(int minutes) {
    return minutes < 60 ? QStringLiteral("%1 Minutes").arg(minutes)
                        : QStringLiteral("%1 Hours %2 Minutes").arg(minutes / 60).arg(minutes % 60);
}

QString line(const QStringList& fields) {
    return fields.join(QLatin1Char(';'));
}

/// As the day file writes an entry, its number left out.
QStringList linesOf(const WorkedDay& day) {
    QStringList lines;
    for (const WorkedEntry& entry : day.entries)
        lines.append(line({entry.project, clockText(entry.start),
                           entry.runs() ? QString() : clockText(entry.stop), spanText(entry.breaks),
                           spanText(entry.total)}));
    return lines;
}

QStringList linesOf(const QList<DayEntry>& entries) {
    QStringList lines;
    for (const DayEntry& entry : entries)
        lines.append(line({entry.ProjectName, entry.StartTime, entry.StopTime, entry.BreakTime,
                           entry.TotalTime}));
    return lines;
}

/// Break and total of the entry that they still rise in are left out.
QStringList withoutTotals(QStringList lines, int index) {
    if (index >= 0 && index < lines.size())
        lines[index] = lines[index].section(QLatin1Char(';'), 0, 2);
    return lines;
}

QStringList rowLines(int date, const WorkedRows& rows) {
    QStringList lines;
    for (auto row = rows.begin(); row != rows.end(); ++row)
        lines.append(QStringLiteral("%1 %2: %3, break %4")
                         .arg(dateOf(date).toString(Qt::ISODate), row.key())
                         .arg(row->total)
                         .arg(row->breaks));
    return lines;
}

} // namespace

// ------------------------------------------------------------------------------ timers, dialogs

void PassingTimer::setInterval(int milliseconds) {
    m_interval = milliseconds;
    m_passed = 0;
}

void PassingTimer::setEnabled(bool on) {
    if (on != m_enabled)
        m_passed = 0;
    m_enabled = on;
}

void PassingTimer::pass(int milliseconds) {
    constexpr int maxFires = 4; // enough of a short timer to see what it does
    m_passed += milliseconds;
    const QPointer<PassingTimer> alive(this);
    for (int fires = 0; alive && m_enabled && m_interval > 0 && m_passed >= m_interval; ++fires) {
        if (fires == maxFires) {
            m_passed = 0;
            return;
        }
        m_passed -= m_interval;
        emit Timer();
    }
}

IntervalTimer* PassingTimers::create(QObject* parent) {
    auto* timer = new PassingTimer;
    timer->setParent(parent);
    m_timers.append(timer);
    return timer;
}

void PassingTimers::pass(int milliseconds) {
    m_timers.removeAll(nullptr);
    const QList<QPointer<PassingTimer>> existing = m_timers;
    for (const QPointer<PassingTimer>& timer : existing)
        if (timer)
            timer->pass(milliseconds);
}

BoxAnswer AgreeingDialogs::ask(const Box& box) {
    texts.append(box.title + QStringLiteral(": ") + box.text);
    switch (box.buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::OkCancel:
        return box.text.startsWith(QLatin1String("Delete")) ? BoxAnswer::Ok : BoxAnswer::Cancel;
    default:
        return BoxAnswer::No;
    }
}

// ------------------------------------------------------------------------------------- the run

FoldersInMemory::FoldersInMemory() : m_former(qgetenv("TMPDIR")) {
    const QFileInfo memory(text("/dev/shm"));
    if (memory.isDir() && memory.isWritable())
        qputenv("TMPDIR", QFile::encodeName(memory.filePath()));
}

FoldersInMemory::~FoldersInMemory() {
    m_former.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_former);
}

DayRunner::DayRunner() : m_zone(qgetenv("TZ")) {
    if (!qEnvironmentVariableIsSet("TZ"))
        m_zone = QByteArray();
    m_emptyHistory = fileBytes(historyName);
    const QString projects = path(text("projects.mdb"));
    CreateProjectDatabase(projects);
    Connection connection(projects);
    Recordset rows(connection, text("ProjectInfo"), Recordset::Optimistic);
    for (int number = 0; number < projectCount; ++number) {
        rows.addNew();
        rows.setValue(text("Project_Name"), ProjectOf(number));
        rows.setValue(text("Project_Number"), QString::number(2001 + number));
        rows.setValue(text("Active"), true);
        rows.update();
    }
    WireModify();
    WireControlScreen();
    screens.onLoad = [this](Screen screen) {
        if (screen == Screen::frmSTM)
            EnsureControlScreenLoaded();
        if (screen == Screen::frmModify)
            FrmModify_Load();
        if (screen == Screen::frmExit)
            m_prompt = std::make_unique<ExitPrompt>();
    };
    screens.onUnload = [this](Screen screen) {
        if (screen == Screen::frmSTM)
            UnloadControlScreen();
        if (screen == Screen::frmModify)
            FrmModify_Unload();
        if (screen == Screen::frmExit && m_prompt)
            m_closedPrompts.push_back(std::move(m_prompt));
    };
}

DayRunner::~DayRunner() {
    m_prompt.reset();
    m_closedPrompts.clear();
    m_form.reset();
    setZone(m_zone);
}

Moment DayRunner::moment() const {
    const QDateTime now = clock.now();
    return {.wall = WallSeconds(now),
            .boot = clock.bootTime() / 1000,
            .awake = clock.awakeTime() / 1000,
            .utc = now.toSecsSinceEpoch()};
}

void DayRunner::reset(const DayScript& script) {
    m_outcome = {};
    m_storedState.clear();
    m_model = WorkedModel();
    m_model.stopWork = script.stopWork;
    m_ticks = 0;
    setZone(script.zone.toLatin1());
    QDir home(folder.path());
    for (const QString& name : home.entryList({text("Fileinfo*"), text("DayInfo*")}, QDir::Files))
        home.remove(name);
    writeFile(historyName, m_emptyHistory);
    globals = {};
    SkippedErrors().clear();
    ports.timers = &m_timers;
    ports.dialogs = &m_dialogs;
    installSettings();
    ProjectDatabase = path(text("projects.mdb"));
    StopWorkTime = clockText(script.stopWork);
    NoRecentProjects = true;
    clock.set(script.begins);
}

/// A process begins; whatever the former one had in memory is gone.
void DayRunner::launch() {
    m_prompt.reset();
    m_closedPrompts.clear();
    m_form.reset();
    restart();
    Menus().reset();
    Questions().clear();
    screens.loaded.clear();
    screens.visible.clear();
    m_form = std::make_unique<frmInfo>();
    m_ticks = 0;
    screens.show(Screen::frmSTM);
    m_model.launch(moment());
}

DayOutcome DayRunner::play(const DayScript& script) {
    reset(script);
    launch();
    for (const DayEvent& event : script.events) {
        note(Describe(event));
        handle(event);
        check();
        for (const QString& box : std::exchange(m_dialogs.texts, {}))
            m_outcome.log.append(text("            box: ") + QString(box).replace(u'\n', u' '));
        m_closedPrompts.clear();
        ++m_outcome.played;
        if (!m_outcome.problem.isEmpty())
            break;
    }
    if (!m_historyFree)
        disturbHistory(EventKind::ReleaseHistory);
    m_outcome.log += sideBySide();
    m_outcome.log.append(m_outcome.problem);
    return m_outcome;
}

void DayRunner::note(const QString& what) {
    const QDateTime now = clock.now();
    m_outcome.log.append(QLocale::c().toString(now, text("ddd M/d/yyyy h:mm:ss AP  ")) + what);
}

// ------------------------------------------------------------------------------------- events

void DayRunner::tick() {
    clock.pass(tickSeconds);
    const bool promptWasOpen = m_model.promptOpen();
    m_timers.pass(tickSeconds * 1000);
    ++m_ticks;
    const Moment now = moment();
    m_model.read(now);
    if (m_ticks % 6 == 0)
        m_model.minuteTick(now);
    if (!promptWasOpen)
        m_promptTicks = 0;
    else if (++m_promptTicks % 6 == 0)
        m_model.promptMinute(now);
    m_closedPrompts.clear();
}

/// The machine is awake. Nothing depends on the ticks of a quiet hour, so only those around
/// midnight, around the end of work, and the last ones are there.
void DayRunner::passTime(int seconds) {
    constexpr int quiet = 240;
    tick(); // what happened before is noticed first
    seconds -= tickSeconds;
    while (seconds > 0 && m_outcome.problem.isEmpty()) {
        const int second = clock.time().msecsSinceStartOfDay() / 1000;
        int until = 86400 - second;
        if (const int toStop = m_model.stopWork * 60 - second; toStop > 0)
            until = qMin(until, toStop);
        const int skipped = qMin(seconds, until) - quiet / 2;
        if (skipped > quiet && !m_model.promptOpen()) {
            clock.pass(skipped);
            seconds -= skipped;
        }
        tick();
        seconds -= tickSeconds;
    }
}

int DayRunner::secondsOf(const DayEvent& event) const {
    if (event.stretch == Stretch::Seconds)
        return event.amount;
    const int second = clock.time().msecsSinceStartOfDay() / 1000;
    return qMax(1, 86400 - second + event.amount);
}

void DayRunner::handle(const DayEvent& event) {
    switch (event.kind) {
    case EventKind::Pass:
        return passTime(secondsOf(event));
    case EventKind::StandStill:
        return clock.pass(secondsOf(event));
    case EventKind::Sleep:
        return clock.sleep(secondsOf(event));
    case EventKind::Jump:
        tick();
        clock.jump(event.amount);
        return tick();
    case EventKind::Start:
        StartProjectByName(ProjectOf(event.amount));
        return m_model.start(ProjectOf(event.amount), moment());
    case EventKind::Stop:
        showScreen();
        TimeCtrlClick(text("STOP"));
        return m_model.stop(moment());
    case EventKind::Break:
        showScreen();
        TimeCtrlClick(text("BREAK"));
        return m_model.breakButton(moment());
    case EventKind::QuitAndSave:
        showScreen();
        TimeCtrlClick(text("QUITANDSAVE"));
        return m_model.quitAndSave(moment());
    case EventKind::TrayStop:
        TrayMenuClick(text("mnuSysTrayStop"));
        return m_model.trayStop(moment());
    case EventKind::TrayBreak:
        TrayMenuClick(text(tray_items::Break));
        return m_model.trayBreak(moment());
    case EventKind::TrayQuitAndSave:
        TrayMenuClick(text("mnuSystrayStatusQuitSaveDay"));
        return m_model.quitAndSave(moment());
    case EventKind::ShowScreen:
        return showScreen();
    case EventKind::Delete:
        return deleteRow(event.amount);
    case EventKind::Correct:
        return correct(event);
    case EventKind::PromptSave:
        if (!m_prompt)
            return;
        m_prompt->controls.click(text("cmdSave"));
        return m_model.promptSave(moment());
    case EventKind::PromptCancel:
        if (!m_prompt)
            return;
        m_prompt->controls.click(text("cmdCancel"));
        return m_model.promptCancel();
    case EventKind::AnswerNight:
        return answerNight(event.amount);
    case EventKind::AnswerClock:
        return answerClock();
    case EventKind::LockHistory:
    case EventKind::ReadHistory:
    case EventKind::HideHistory:
        return disturbHistory(event.kind);
    case EventKind::ReleaseHistory:
        return releaseHistory();
    case EventKind::LogOut:
    case EventKind::ExitProgram:
    case EventKind::Kill:
        return end(event);
    }
}

/// Commands of the control screen need it on screen.
void DayRunner::showScreen() {
    TrayMenuClick(text("mnuSystrayViewProjectInfo"));
    m_model.showScreen(moment());
}

void DayRunner::deleteRow(int number) {
    showScreen();
    const qsizetype count = m_model.day().entries.size();
    if (count == 0)
        return;
    const int row = int(number % count);
    BreakDownSelect(text("START TIME") + QString::number(row));
    if (!Control().mnuSetData.item(text("mnuSetDataDeleteProject")).visible)
        return;
    SetDataClick(text("mnuSetDataDeleteProject"));
    m_model.remove(row, moment());
}

void DayRunner::correct(const DayEvent& event) {
    showScreen();
    do // a person needs a moment, and sees the day as it is
        tick();
    while (m_ticks % 6 != 0);
    const QList<WorkedEntry> entries = m_model.day().entries;
    if (entries.isEmpty())
        return;
    const int row = int(event.amount % entries.size());
    const WorkedEntry& entry = entries[row];
    const Moment now = moment();
    Correction correction;
    BreakDownSelect(text("START TIME") + QString::number(row));
    SetDataClick(text("mnuSetDataModifyTime"));
    /// A value that stays what it was is no edit.
    const auto edit = [](std::optional<int>& field, int old, int value, const QString& key,
                         const QString& typed) {
        if (value == old)
            return;
        field = value;
        Modify().SmuiModify.edit(key, typed);
    };
    const auto moved = [&](int minute) {
        return qBound(0, minute + event.change, minutesADay - 1);
    };
    switch (event.field) {
    case CorrectedField::Start:
        edit(correction.start, entry.start, moved(entry.start), modify_rows::Start,
             clockText(moved(entry.start)));
        break;
    case CorrectedField::Stop: {
        const int stop = moved(entry.runs() ? now.minute() : entry.stop);
        edit(correction.stop, entry.stop, stop, modify_rows::Stop, clockText(stop));
        break;
    }
    case CorrectedField::EmptyStop:
        edit(correction.stop, entry.stop, -1, modify_rows::Stop, QString());
        break;
    case CorrectedField::Break: {
        const int breaks = qMax(0, event.change);
        edit(correction.breaks, entry.breaks, breaks, modify_rows::Break, spanText(breaks));
        break;
    }
    case CorrectedField::Project:
        correction.project = ProjectOf(qAbs(event.change));
        selectionSinks.modify.select(*correction.project,
                                     QString::number(2001 + qAbs(event.change) % projectCount));
        break;
    }
    Modify().buttons.click(text("cmdUpdate"));
    const bool refused = screens.isLoaded(Screen::frmModify);
    if (refused)
        Modify().buttons.click(text("cmdCancel")); // the edits go
    const bool accepted = m_model.correct(row, correction, now);
    if (accepted == refused && m_outcome.problem.isEmpty())
        m_outcome.problem = text(refused ? "the program refused the correction"
                                         : "the program should have refused the correction");
}

void DayRunner::answerNight(int answer) {
    tick();
    if (m_model.nights().isEmpty())
        return;
    const Night night = m_model.nights().first();
    const QList<WaitingQuestion> waiting = Questions().waiting();
    const auto question = std::find_if(waiting.begin(), waiting.end(), [](const auto& candidate) {
        return candidate.kind == QLatin1String("asleep");
    });
    if (question == waiting.end())
        return; // the comparison says so
    const bool offered = question->answers.contains(nightAnswers[1]);
    const bool today = night.woke == m_model.day().date;
    if (night.superseded == offered && today)
        m_outcome.problem = text("\"Count the night\" offered: ") + text(offered ? "yes" : "no");
    if (answer == 1 && (night.superseded || !today || !offered))
        answer = 2;
    Questions().answer(*question, nightAnswers[answer]);
    const Moment now = moment();
    answer == 0   ? m_model.startAgain(now)
    : answer == 1 ? m_model.countNight(now)
                  : m_model.leaveNight(now);
}

void DayRunner::answerClock() {
    tick();
    if (!m_model.dayIsAhead(moment()))
        return;
    for (const WaitingQuestion& question : Questions().waiting())
        if (question.kind == QLatin1String("clock")) {
            Questions().answer(question, text("The clock is right now"));
            return m_model.clockIsRight(moment());
        }
}

void DayRunner::disturbHistory(EventKind kind) {
    if (m_historyFree == (kind == EventKind::ReleaseHistory))
        return;
    m_historyFree = kind == EventKind::ReleaseHistory;
    m_model.setHistoryWritable(m_historyFree);
    const QString away = path(text("away.mdb"));
    switch (kind) {
    case EventKind::HideHistory:
        QFile::rename(path(historyName), away);
        break;
    case EventKind::LockHistory:
    case EventKind::ReadHistory: {
        m_otherProgram = QSqlDatabase::addDatabase(text("QSQLITE"), otherName);
        m_otherProgram.setDatabaseName(path(historyName));
        m_otherProgram.open();
        QSqlQuery query(m_otherProgram);
        const bool writes = kind == EventKind::LockHistory;
        query.exec(text(writes ? "BEGIN EXCLUSIVE" : "BEGIN"));
        query.exec(text("SELECT count(*) FROM DayInfo"));
        query.next();
        break;
    }
    default:
        if (QFile::exists(away)) {
            QFile::rename(away, path(historyName));
        } else {
            m_otherProgram.close();
            m_otherProgram = QSqlDatabase();
            QSqlDatabase::removeDatabase(otherName);
        }
    }
}

/// More than a minute later, and with a log-out that somebody called off, all rows are written.
void DayRunner::releaseHistory() {
    disturbHistory(EventKind::ReleaseHistory);
    passTime(7 * tickSeconds);
    SaveForLogOut();
    m_model.exit(moment());
}

void DayRunner::end(const DayEvent& event) {
    if (event.kind == EventKind::LogOut)
        SaveForLogOut();
    if (event.kind == EventKind::ExitProgram)
        ShutDownProgram();
    if (event.kind != EventKind::Kill)
        m_model.exit(moment());
    clock.pass(event.change);
    clock.jump(event.amount);
    note(text("the program starts"));
    launch();
}

// ---------------------------------------------------------------------------------- comparison

void DayRunner::compare(const QString& what, const QStringList& model, const QStringList& program) {
    if (model == program || !m_outcome.problem.isEmpty())
        return;
    m_outcome.problem = what + text("\n  worked:  ") + model.join(text("\n           ")) +
                        text("\n  program: ") + program.join(text("\n           "));
}

void DayRunner::check() {
    const int rising = m_model.totalsAreCurrent() ? -1 : int(m_model.day().entries.size()) - 1;
    compare(text("entries in memory"), withoutTotals(linesOf(m_model.day()), rising),
            withoutTotals(linesOf(DayEntries), rising));

    QStringList saved;
    const QStringList file = QString::fromUtf8(fileBytes(text("Fileinfo.dat"))).split(u'\n');
    for (const QString& entry : file.mid(3)) {
        if (entry.isEmpty())
            break;
        QStringList fields = entry.split(u';');
        fields.removeAt(1);
        saved.append(line(fields));
    }
    compare(text("day file"), linesOf(m_model.saved()), saved);
    if (!saved.isEmpty())
        compare(text("date of the day file"),
                {dateOf(m_model.saved().date).toString(text("'Date: 'M/d/yyyy"))}, {file.value(1)});
    if (m_historyFree)
        checkHistory();

    QStringList nights;
    for (const WaitingQuestion& question : Questions().waiting())
        if (question.kind == QLatin1String("asleep"))
            nights.append(question.kind);
    compare(text("questions about a night"), QStringList(m_model.nights().size(), text("asleep")),
            nights);
    compare(text("end-of-day prompt"), {text(m_model.promptOpen() ? "open" : "closed")},
            {text(m_prompt ? "open" : "closed")});
    static const QRegularExpression negative(text("-\\d"));
    if (saved.join(u' ').contains(negative))
        compare(text("nothing below zero"), {}, saved);
}

/// Read anew where a transaction changed them, which counts up in the file's head, or where it is
/// another file.
const QStringList& DayRunner::storedRows() {
    QFile file(path(historyName));
    struct stat status = {};
    if (!file.open(QIODevice::ReadOnly) || ::fstat(file.handle(), &status) != 0) {
        m_outcome.problem = text("the history can't be read");
        return m_storedRows;
    }
    const QByteArray state = QByteArray::number(quint64(status.st_ino)) + file.read(100);
    if (std::exchange(m_storedState, state) == state)
        return m_storedRows;
    m_storedRows.clear();
    Connection connection(path(historyName));
    QSqlQuery table =
        connection.select(text("SELECT Date, ProjectName, TotalTime, BreakTime FROM DayInfo"));
    while (table.next())
        m_storedRows.append(QStringLiteral("%1 %2: %3, break %4")
                                .arg(table.value(0).toString(), table.value(1).toString(),
                                     table.value(2).toString(), table.value(3).toString()));
    m_storedRows.sort();
    return m_storedRows;
}

void DayRunner::checkHistory() {
    if (m_model.owesRows())
        return;
    const int today = m_model.day().date;
    const bool current = m_model.rowsAreCurrent();
    QStringList expected;
    const QMap<int, WorkedRows>& history = m_model.history();
    for (auto day = history.begin(); day != history.end(); ++day)
        if (day.key() != today || current)
            expected += rowLines(day.key(), *day);
    QStringList rows = storedRows();
    if (!current)
        rows.removeIf([left = dateOf(today).toString(Qt::ISODate)](const QString& row) {
            return row.startsWith(left);
        });
    compare(text("rows of the history"), expected, rows);
}

QStringList DayRunner::sideBySide() const {
    const QStringList model = linesOf(m_model.day());
    const QStringList program = linesOf(DayEntries);
    constexpr int width = 60;
    QStringList lines{text("Worked").leftJustified(width) + text("Program")};
    for (qsizetype row = 0; row < qMax(model.size(), program.size()); ++row)
        lines.append(model.value(row).leftJustified(width) + program.value(row));
    return lines;
}

// ------------------------------------------------------------------------------------ failures

QString DayOutcome::report(const DayScript& script) const {
    QString head = QStringLiteral("\nA day in %1 from %2, end of work at %3.\n")
                       .arg(script.zone, script.begins, clockText(script.stopWork));
    if (script.seed >= 0)
        head += QStringLiteral("KELVRANE_SEED=%1 plays the whole of it.\n").arg(script.seed);
    return head + log.join(u'\n') + u'\n';
}

DayScript DayRunner::shrink(DayScript script) {
    script.events.resize(play(script).played);
    for (qsizetype chunk = script.events.size() / 2; chunk > 0; chunk /= 2) {
        for (qsizetype from = 0; from < script.events.size();) {
            DayScript shorter = script;
            shorter.events.remove(from, qMin(chunk, shorter.events.size() - from));
            const DayOutcome outcome = play(shorter);
            if (outcome.problem.isEmpty())
                from += chunk;
            else
                script.events = shorter.events.mid(0, outcome.played);
        }
    }
    return script;
}

void DayRunner::expectWorked(const DayScript& script) {
    if (play(script).problem.isEmpty())
        return;
    const DayScript shortest = shrink(script);
    ADD_FAILURE() << play(shortest).report(shortest).toStdString();
}

} // namespace kelvrane::testing
