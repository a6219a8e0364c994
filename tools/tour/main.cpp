// Takes the real screens through a day on a scripted clock, offscreen, and leaves pictures of them
// in the folder named on the command line, with the day file and the history's rows.

#include "app/program.h"
#include "charts_tour.h"
#include "editing_tour.h"
#include "example_tour.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "frame/status_text.h"
#include "help_tour.h"
#include "platform/error.h"
#include "platform/file_store.h"
#include "platform/installed_files.h"
#include "platform/instance_lock.h"
#include "platform/recordset.h"
#include "sheets_tour.h"
#include "timekeeping/control_model.h"
#include "timekeeping/control_screen.h"
#include "timekeeping/control_views.h"
#include "timekeeping/tray_state.h"
#include "tour.h"
#include "tour_data.h"
#include "tray/hidden_form.h"
#include "widgets/tray_fallback_window.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QStyleFactory>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace kelvrane::tour {
namespace {

class Tour {
  public:
    explicit Tour(const QString& folder)
        : m_folder(folder), m_album(folder), m_timers(m_clock), m_printer(folder) {}

    /// False when something was missing or in the way; each such thing has had its line.
    bool run() {
        m_clock.set(QDateTime(QDate(2026, 3, 4), QTime(8, 0)));
        ExampleTour(m_album, m_clock, m_timers, m_folder + QStringLiteral("/example")).run();
        firstStart();
        globals = {};
        workingDay();
        troubles();
        writeIndex();
        return m_album.isWhole();
    }

  private:
    void begin() {
        m_program = std::make_unique<Program>(
            PortChoices{.clock = &m_clock, .timers = &m_timers, .printer = &m_printer});
    }
    QWidget* screen(Screen name) { return m_program->screens().widget(name); }
    void picture(const QString& name, Screen which) { m_album.picture(name, screen(which)); }
    void choose(int place) {
        Control().smuiProjectStatus.choose(QStringLiteral("PROJECT_NAME"), place);
    }
    void command(const char* key) { Control().smuiTimeCtrl.click(QString::fromLatin1(key)); }
    void view(const char* key) { Control().smuiPanelLayout.toggle(QString::fromLatin1(key)); }

    void firstStart() {
        begin();
        m_album.withBoxes({{QStringLiteral("first-start"), QStringLiteral("No")}},
                          [this] { m_program->start({}); });
        picture(QStringLiteral("empty-day"), Screen::frmSTM);
        tipAndAbout();
        EditingTour(m_album, *m_program).onNothing();
        FillDatabases(m_clock.today());
        FillRecentProjects();
        m_program.reset();
    }

    void tipAndAbout() {
        picture(QStringLiteral("tip"), Screen::frmTip);
        ports.screens->unload(Screen::frmTip);
        for (const auto& [name, host] :
             {std::pair{"about", ""}, std::pair{"about-with-address", "www.example.org"}}) {
            RegSetKeyValue(keys::Main, QStringLiteral("UpdateWebHost"), QString::fromLatin1(host));
            TrayMenuClick(QStringLiteral("mnuAboutKelvrane"));
            picture(QString::fromLatin1(name), Screen::frmAbout);
            ports.screens->unload(Screen::frmAbout);
        }
        RegSetKeyValue(keys::Main, QStringLiteral("UpdateWebHost"), QString());
    }

    void workingDay() {
        begin();
        m_program->start({});
        QWidget* control = screen(Screen::frmSTM);
        control->resize(1000, 620);
        choose(0);
        m_timers.pass(47);
        picture(QStringLiteral("running"), Screen::frmSTM);
        command("BREAK");
        m_timers.pass(12);
        picture(QStringLiteral("on-break"), Screen::frmSTM);
        command("BREAK");
        m_timers.pass(38);
        choose(2);
        m_timers.pass(84);
        picture(QStringLiteral("second-project"), Screen::frmSTM);
        trayMenus();
        EditingTour(m_album, *m_program).onWorkingDay();
        SheetsTour(m_album, *m_program, m_printer, m_folder).run();
        ChartsTour(m_album, *m_program).run();
        HelpTour(m_album, *m_program).run();
        views();
        charts();
        reminder();
        endOfDay();
        midnight();
    }

    void trayMenus() {
        RebuildRecentMenu();
        for (const auto& [name, menu] :
             {std::pair{"tray-menu", m_program->tray().contextMenu()},
              std::pair{"tray-recent-projects", m_program->tray().recentMenu()}}) {
            menu->popup(QPoint(20, 20));
            m_album.picture(QString::fromLatin1(name), menu);
            menu->close();
        }
        for (QAction* action : m_program->tray().contextMenu()->actions())
            if (QMenu* sub = action->isVisible() ? action->menu() : nullptr) {
                sub->popup(QPoint(20, 20));
                m_album.picture(QStringLiteral("tray-") +
                                    action->text().toLower().remove(QLatin1Char('&')),
                                sub);
                sub->close();
            }
        TrayFallbackWindow window(m_program->tray().contextMenu(), m_program->tray().recentMenu());
        window.setState(CurrentDayState(), TrayToolTip());
        window.show();
        m_album.picture(QStringLiteral("tray-window"), &window);
    }

    void views() {
        view("QUICKVIEW");
        view("WEEKVIEW");
        picture(QStringLiteral("quick-and-week-view"), Screen::frmSTM);
        view("QUICKVIEW");
        view("WEEKVIEW");
        command("CONTROLPANEL");
        picture(QStringLiteral("without-panel"), Screen::frmSTM);
        command("CONTROLPANEL");
        view("BREAKDOWN");
        QWidget* control = screen(Screen::frmSTM);
        const QSize before = control->size();
        control->resize(653, 393);
        picture(QStringLiteral("first-size"), Screen::frmSTM);
        control->resize(before);
    }

    void charts() {
        choose(3);
        m_timers.pass(55);
        choose(1);
        m_timers.pass(35);
        picture(QStringLiteral("full-day"), Screen::frmSTM);
        QWidget* chart = screen(Screen::frmSTM)->findChild<QWidget*>(QStringLiteral("ChartSpace1"));
        for (int type = 0; type < 19; ++type) {
            m_album.picture(QStringLiteral("chart-%1").arg(type, 2, 10, QLatin1Char('0')), chart);
            NextGraphType();
        }
    }

    void reminder() {
        screen(Screen::frmSTM)->close();
        AutoDayReminder = QStringLiteral("On");
        AutoDayReminderValue = 30;
        m_clock.set(QDateTime(m_clock.today(), QTime(14, 28, 0)));
        m_timers.pass(3);
        AutoDayReminder = QStringLiteral("Off");
        if (ports.screens->isVisible(Screen::frmSTM))
            picture(QStringLiteral("reminder"), Screen::frmSTM);
        ports.progress->show(QStringLiteral("Saving Data ... "));
        ports.progress->setPercent(70);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("frmProgress"))
                m_album.picture(QStringLiteral("progress"), window);
        ports.progress->close();
    }

    void endOfDay() {
        m_clock.set(QDateTime(m_clock.today(), QTime(16, 58, 0)));
        m_timers.pass(3);
        picture(QStringLiteral("end-of-day"), Screen::frmExit);
        if (QWidget* prompt = screen(Screen::frmExit)) {
            if (auto* update = prompt->findChild<QAbstractButton*>(QStringLiteral("cmdUpdate")))
                update->click();
            m_album.picture(QStringLiteral("end-of-day-new-time"), prompt);
            ports.screens->unload(Screen::frmExit);
        }
    }

    void midnight() {
        copy(QStringLiteral("before-midnight"));
        m_clock.set(QDateTime(m_clock.today(), QTime(23, 57, 0)));
        m_timers.pass(9);
        ports.screens->unload(Screen::frmExit);
        picture(QStringLiteral("after-midnight"), Screen::frmSTM);
        command("STOP");
        picture(QStringLiteral("stopped"), Screen::frmSTM);
        writeHistory();
        copy(QStringLiteral("at-the-end"));
        const QDateTime end = m_clock.now();
        m_clock.set(end.addDays(-1));
        m_timers.pass(1);
        picture(QStringLiteral("waiting-question"), Screen::frmSTM);
        m_clock.set(end);
        m_timers.pass(1);
    }

    void trace() {
        begin();
        m_program->start(QStringLiteral("debug"));
        picture(QStringLiteral("start-trace"), Screen::frmDebugWindow);
        m_program.reset();
    }

    void missingProjects() {
        const QString projects = InAppPath(QString::fromLatin1(files::ProjectDatabase));
        QFile::rename(projects, projects + QStringLiteral(".away"));
        begin();
        QTimer poll; // the start waits for the options window
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (!ports.screens->isVisible(Screen::frmOptions))
                return;
            poll.stop();
            picture(QStringLiteral("choose-projects"), Screen::frmOptions);
            screen(Screen::frmOptions)->close();
        });
        poll.start(10);
        m_album.withBoxes({{QStringLiteral("missing-projects"), QStringLiteral("OK")}},
                          [this] { m_program->start({}); });
        m_program.reset();
        QFile::rename(projects + QStringLiteral(".away"), projects);
    }

    void troubles() {
        m_album.withBoxes({{QStringLiteral("exit-question"), QStringLiteral("Cancel")}},
                          [] { TrayMenuClick(QStringLiteral("mnuSysTrayExit")); });
        m_program.reset();
        {
            InstanceLock other(InAppPath(QString::fromLatin1(files::Lock)));
            other.tryLock();
            begin();
            m_album.withBoxes({{QStringLiteral("second-instance"), QStringLiteral("OK")}},
                              [this] { m_program->start({}); });
            m_program.reset();
        }
        trace();
        missingProjects();
        QFile::remove(InAppPath(QString::fromLatin1(files::DayHistory)));
        begin();
        m_album.withBoxes({{QStringLiteral("missing-history"), QStringLiteral("OK")}},
                          [this] { m_program->start({}); });
        m_program.reset();
        begin();
        m_album.withBoxes({{QStringLiteral("error-report"), QStringLiteral("OK")}}, [] {
            Control().lvwWeekView.setRows({});
            DayEntries = {{QStringLiteral("O'Neil"), QStringLiteral("1"), QStringLiteral("9:00 AM"),
                           QStringLiteral("9:30 AM"), QStringLiteral("0 Minutes"),
                           QStringLiteral("30 Minutes")}};
            ports.dialogs->ask(
                {QStringLiteral("Error # -2147217900 was generated by SQLite\r\nnear "
                                "\"Neil\": syntax error\r\nThis error was generated by "
                                "the AddDataToDayInfoDataBase function.")});
        });
        m_program.reset();
    }

    void copy(const QString& name) {
        const QString target =
            m_folder + QStringLiteral("/Fileinfo-") + name + QStringLiteral(".dat");
        QFile::remove(target);
        QFile::copy(InAppPath(QString::fromLatin1(files::DayFile)), target);
    }

    void writeHistory() {
        QFile file(m_folder + QStringLiteral("/history.txt"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
            return;
        QTextStream out(&file);
        Connection connection(InAppPath(QString::fromLatin1(files::DayHistory)));
        for (Recordset rows(connection, QStringLiteral("DayInfo")); !rows.atEnd();
             rows.moveNext()) {
            QStringList cells;
            for (int field = 0; field < rows.fieldCount(); ++field)
                cells.append(rows.text(field));
            out << cells.join(QLatin1Char('\t')) << '\n';
        }
    }

    void writeIndex() {
        for (const QString& file : m_album.files())
            std::printf("%s\n", qPrintable(file));
        for (const QString& file :
             QDir(m_folder).entryList({QStringLiteral("*.dat"), QStringLiteral("*.txt")}))
            std::printf("%s\n", qPrintable(file));
    }

    QString m_folder;
    Album m_album;
    TourClock m_clock;
    TourTimers m_timers;
    TourPrinter m_printer;
    std::unique_ptr<Program> m_program;
};

} // namespace
} // namespace kelvrane::tour

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: tour FOLDER\n", stderr);
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setQuitOnLastWindowClosed(false);
    kelvrane::SetInstalledFolder(QApplication::applicationDirPath() + QStringLiteral("/../.."));
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    QDir(folder).removeRecursively();
    for (const char* data : {"/home", "/example"})
        // Its owner's alone: the program shows a box about a folder that others can enter.
        kelvrane::DiskFileStore().createFolder(folder + QLatin1String(data));
    kelvrane::SetAppPath(folder + QStringLiteral("/home"));
    try {
        return kelvrane::tour::Tour(folder).run() ? 0 : 1;
    } catch (const kelvrane::RuntimeError& error) {
        std::fprintf(stderr, "tour: %s\n", error.what());
        return 1;
    }
}
