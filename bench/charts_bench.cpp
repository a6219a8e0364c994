#include "charts_bench.h"

#include "bench_folder.h"
#include "charts/chart_screen.h"
#include "charts/chart_types.h"
#include "chartspace/scene.h"
#include "floors.h"
#include "folder_steps.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/connection.h"
#include "quiet_ports.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <array>
#include <functional>
#include <memory>

namespace kelvrane::bench {

namespace {

constexpr int historyRows = 125'000;
constexpr int projects = 40;
constexpr int years = 10;
constexpr int manyProjects = 10'000;

constexpr char data[] = "chart of ten years";
constexpr char treeByDate[] = "the same, tree by date";
constexpr char treeByProject[] = "the same, tree by project";
constexpr char branch[] = "open a branch of the tree";
constexpr char drawing[] = "19 charts, 10,000 projects";

class ChartFolder {
  public:
    ChartFolder(QuietPorts& quiet, QDate present)
        : m_quiet(quiet), m_folder(QDir::currentPath() + QStringLiteral("/bench-XXXXXX")),
          m_present(present) {
        PrepareFolder(quiet, m_folder.path(), 1, present);
        fillHistory();
    }

    QDate first() const { return m_present.addYears(-years).addDays(1); }
    QDate last() const { return m_present; }
    QString history() const { return InAppPath(QString::fromLatin1(files::DayHistory)); }

    void enter() const {
        globals = {};
        SetAppPath(m_folder.path());
        m_quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
        Charts().reset(m_present);
        Charts().RangeMode = true;
        Charts().StartDate = first();
    }

  private:
    /// All projects in turn, spread over every day of the ten years.
    void fillHistory() const {
        SetAppPath(m_folder.path());
        Connection connection(history());
        connection.execute(QStringLiteral("DELETE FROM DayInfo"));
        connection.execute(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < %1) "
                "INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, BreakTime, TotalTime) "
                "SELECT date('%2', '+' || (i * %3 / %1) || ' days'), "
                "'Project ' || substr('0' || (i % %4), -2), '100' || (i % %4), i % 10, 30 + i % 90 "
                "FROM n")
                .arg(historyRows)
                .arg(first().toString(Qt::ISODate))
                .arg(first().daysTo(last()) + 1)
                .arg(projects));
        connection.execute(QStringLiteral("ANALYZE"));
    }

    QuietPorts& m_quiet;
    QTemporaryDir m_folder;
    QDate m_present;
};

using Folder = std::shared_ptr<ChartFolder>;
using Step = std::function<void(const ChartFolder&)>;

void addWithFloor(const Folder& folder, const char* name, const Step& prepare) {
    AddStep(folder, name, historyRows, 9, prepare,
            [](const ChartFolder&) { FillSetSpreadSheetValuesArray(); });
    AddStep(folder, std::string(name) + " floor", historyRows, 9, prepare,
            [](const ChartFolder& on) { FloorPeriodPass(on.history(), on.first(), on.last()); });
}

Step withTree(int order) {
    return [order](const ChartFolder&) {
        Charts().settings.ViewList = true;
        Charts().settings.ListViewType = order;
    };
}

/// Fills the tree once; then one project after the other is opened.
void openBranch(const ChartFolder&) {
    ChartTree& tree = Charts().tree;
    static int opened = 0;
    const QModelIndex top = tree.index(opened++ % projects, 0);
    if (!tree.canFetchMore(top))
        FillViewList();
    tree.fetchMore(tree.index(top.row(), 0));
}

chartspace::Chart largeChart() {
    chartspace::Chart chart;
    chart.series = {{QStringLiteral("Work"), {}}, {QStringLiteral("Break"), {}}};
    for (int i = 0; i < manyProjects; ++i) {
        chart.categories.append(QStringLiteral("Project %1").arg(i));
        chart.series[0].values.append(1.5 + i * 37 % 50);
        chart.series[1].values.append(0.25 + i * 13 % 9);
    }
    return chart;
}

/// Each type laid out and painted once.
void drawAll(const ChartFolder&) {
    static chartspace::Chart chart = largeChart();
    for (int place = 0; place < chartTypeCount; ++place) {
        chart.type = DrawnTypeAt(place);
        QImage image(480, 300, QImage::Format_RGB32);
        QPainter painter(&image);
        chartspace::Scene(chart, image.size(), chartspace::PaperTheme(), QFont()).paint(painter);
    }
}

} // namespace

std::vector<Limit> AddChartBenchmarks(QuietPorts& quiet, QDate present) {
    const auto folder = std::make_shared<ChartFolder>(quiet, present);
    addWithFloor(folder, data, [](const ChartFolder&) {});
    addWithFloor(folder, treeByDate, withTree(list_views::ByDate));
    addWithFloor(folder, treeByProject, withTree(list_views::ByProject));
    AddStep(
        folder, branch, historyRows, 9,
        [](const ChartFolder& on) {
            withTree(list_views::ByProject)(on);
            FillSetSpreadSheetValuesArray();
        },
        openBranch);
    AddStep(
        folder, drawing, manyProjects, 3, [](const ChartFolder&) {}, drawAll);
    return {{data, 1.5, 0, false},
            {treeByDate, 1.5, 0, false},
            {treeByProject, 1.5, 0, false},
            {branch, 0, 100, false},
            {drawing, 0, 10000, false}};
}

} // namespace kelvrane::bench
