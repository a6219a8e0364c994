// kelvrane_bench [ROWS...] [--benchmark_...]: the operations of a day against their floors, at
// histories of 12,500, 125,000 and 1,250,000 rows. Exits 1 when a limit isn't kept.
#include "bench_folder.h"
#include "calendar/day_calendar.h"
#include "charts_bench.h"
#include "floors.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/compaction.h"
#include "history/roll_up.h"
#include "projects_bench.h"
#include "quiet_ports.h"
#include "records_bench.h"
#include "report.h"
#include "sheets_bench.h"
#include "timekeeping/control_model.h"
#include "timekeeping/week_hours.h"
#include "timekeeping/working_day.h"
#include "timevalues/counter.h"
#include "timevalues/day_file.h"
#include "tray/hidden_form.h"
#include "tray/minute_tick.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>
#include <memory>

namespace kelvrane::bench {
namespace {

// A Wednesday, outside the quarter hours.
const QDateTime present(QDate(2026, 3, 4), QTime(12, 7));

constexpr char rollUp[] = "roll-up of five projects";
constexpr char weekView[] = "week view";
constexpr char saveDay[] = "save the day file";
constexpr char minuteTick[] = "minute tick";
constexpr char calendarClick[] = "calendar click";
constexpr char calendarRunning[] = "the same on a running day";
constexpr char singleRecords[] = "single records";
constexpr char compaction[] = "backup and compaction";

/// A running day of five projects on the history of one folder.
class Day {
  public:
    Day(QuietPorts& quiet, int rows)
        : m_quiet(quiet), m_folder(QDir::currentPath() + QStringLiteral("/bench-XXXXXX")) {
        PrepareFolder(m_quiet, m_folder.path(), rows, present.date());
    }

    /// Makes it the program's day; the same state each time.
    void enter() {
        globals = {};
        ResetRollUp();
        SetAppPath(m_folder.path());
        m_quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
        StartOfWeek = QStringLiteral("2");
        TimeIncrements = QStringLiteral("15 Minutes");
        StopWorkTime = QStringLiteral("5:00 PM");
        EndOfDayTimeInterval = 15;
        AutoSave = QStringLiteral("On");
        Control().reset();
        for (const QString& name : ProjectNames()) {
            const int hour = 7 + static_cast<int>(DayEntries.size());
            DayEntries.append({name, QStringLiteral("100"), QStringLiteral("%1:00 AM").arg(hour),
                               QStringLiteral("%1:00 AM").arg(hour + 1),
                               QStringLiteral("5 Minutes"), QStringLiteral("1 Hours 0 Minutes")});
        }
        DayEntries.last().StopTime.clear();
        DayDate = present.date();
        ControlScreenLoaded = true;
        GraphShowing = true;
        WeekViewShowing = true;
        UnloadHiddenForm();
        HiddenForm();
        FillBreakDownList();
        SetLVWColumnHeaders();
        LoadDayInfo();
    }
    QString history() const { return InAppPath(QString::fromLatin1(files::DayHistory)); }
    QString dayFile() const { return InAppPath(QString::fromLatin1(files::DayFile)); }

  private:
    QuietPorts& m_quiet;
    QTemporaryDir m_folder;
};

using Step = std::function<void(Day&)>;

/// Each run has something new to show and to write, as a running day does.
void oneMoreMinute() {
    static int minute = 0;
    minute = (minute + 1) % 50;
    for (DayEntry& entry : DayEntries)
        entry.TotalTime = QStringLiteral("%1 Minutes").arg(minute);
    DayEntries.last().StartTime = QStringLiteral("11:%1 AM").arg(minute + 10);
}

void add(const char* name, const char* suffix, const std::shared_ptr<Day>& day, int rows,
         int repetitions, const Step& step) {
    const std::string whole = std::string(name) + suffix + '/' + std::to_string(rows);
    auto* registered =
        benchmark::RegisterBenchmark(whole.c_str(), [day, step](benchmark::State& state) {
            day->enter();
            for (auto iteration : state) {
                static_cast<void>(iteration);
                step(*day);
            }
        });
    registered->UseRealTime()->Repetitions(repetitions)->MinTime(0.1);
}

void addAll(QuietPorts& quiet, int rows) {
    const auto day = std::make_shared<Day>(quiet, rows);
    const auto pair = [&](const char* name, int repetitions, const Step& subject,
                          const Step& floor) {
        add(name, "", day, rows, repetitions, subject);
        if (floor)
            add(name, " floor", day, rows, repetitions, floor);
    };
    pair(
        rollUp, 15,
        [](Day&) {
            oneMoreMinute();
            AddDataToDayInfoDataBase();
        },
        [](Day& on) { FloorRollUp(on.history(), present.date(), ProjectNames()); });
    pair(
        weekView, 15, [](Day&) { FillWeekView(); },
        [](Day& on) { FloorWeekView(on.history(), Control().lvwWeekView.WeekStartDate); });
    day->enter();
    SaveDayFile();
    const QByteArray bytes = ports.files->read(day->dayFile());
    pair(
        saveDay, 15, [](Day&) { SaveDayFile(); },
        [bytes](Day& on) { FloorSave(on.dayFile() + QStringLiteral(".other"), bytes); });
    pair(minuteTick, 15,
         [](Day&) {
             oneMoreMinute();
             TMR_Minute();
         },
         {});
    // Leaving one past day for another. The label of a day of the month, counted from 0.
    const QDate first(present.date().year(), present.date().month(), 1);
    const int labelOfFirst = first.dayOfWeek() % 7;
    const auto click = [labelOfFirst] {
        static int clicked = 0;
        clicked = 1 - clicked;
        DateLabelClick(labelOfFirst + clicked);
    };
    pair(
        calendarClick, 15,
        [click](Day&) {
            DayEntries.clear(); // a running day is rolled up on the way
            click();
        },
        [first](Day& on) { FloorTwoDays(on.history(), first, first.addDays(1)); });
    pair(calendarRunning, 15, [click](Day&) { click(); }, {});
    pair(
        singleRecords, 15, [rows](Day& on) { ReachRecords(on.history(), rows / 2); },
        [rows](Day& on) { FloorReachRecords(on.history(), rows / 2); });
    pair(
        compaction, rows > 500'000 ? 3 : 7,
        [](Day&) { CompactDatabaseFile(AppPath(), QStringLiteral("DayInfo"), true); },
        [](Day& on) {
            FloorCompaction(on.history(), InAppPath(QStringLiteral("DayInfo_Backup.mdb")));
        });
}

int run(int argc, char** argv) {
    std::vector<char*> arguments;
    std::vector<int> rows;
    for (int i = 0; i < argc; ++i) {
        const int count = i > 0 ? std::atoi(argv[i]) : 0;
        if (count > 0)
            rows.push_back(count);
        else
            arguments.push_back(argv[i]);
    }
    if (rows.empty())
        rows = {12'500, 125'000, 1'250'000};
    // Figure and floor take turns, so that a busy moment of the machine meets both.
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaved.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    QuietPorts quiet(present);
    for (const int each : rows)
        addAll(quiet, each);
    std::vector<Limit> limits = {{rollUp, 1.5, 0, false},      {weekView, 2, 0, false},
                                 {saveDay, 2, 0, false},       {minuteTick, 0, 2, false},
                                 {calendarClick, 2, 0, false}, {calendarRunning, 0, 2, false},
                                 {singleRecords, 2, 0, false}, {compaction, 1.3, 0, true}};
    std::ranges::copy(AddProjectBenchmarks(quiet, present.date()), std::back_inserter(limits));
    std::ranges::copy(AddSheetBenchmarks(quiet, present.date()), std::back_inserter(limits));
    std::ranges::copy(AddChartBenchmarks(quiet, present.date()), std::back_inserter(limits));
    TableReporter table(std::move(limits));
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::ClearRegisteredBenchmarks(); // removes the folders
    UnloadHiddenForm();
    globals = {};
    return table.allKept() ? 0 : 1;
}

} // namespace
} // namespace kelvrane::bench

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv); // charts are drawn with fonts
    return kelvrane::bench::run(argc, argv);
}
