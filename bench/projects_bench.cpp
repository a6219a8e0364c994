#include "projects_bench.h"

#include "bench_folder.h"
#include "floors.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/connection.h"
#include "quiet_ports.h"
#include "records/database_manager.h"
#include "records/list_fill.h"
#include "records/manager_model.h"
#include "records/record_panel.h"
#include "records/record_search.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <string>

namespace kelvrane::bench {

namespace {

constexpr int projects = 10'000;
// The list's search skips rows, so that there are several to be met at the end.
constexpr int firstWanted = projects - 20;
const QString wanted = QStringLiteral("needle");

constexpr char opening[] = "open the Database Manager";
constexpr char filling[] = "fill the project list";
constexpr char sorting[] = "sort the project list";
constexpr char findInRecords[] = "find in the record view";
constexpr char findInList[] = "find in the list view";

class ProjectFolder {
  public:
    ProjectFolder(QuietPorts& quiet, QDate present)
        : m_quiet(quiet), m_folder(QDir::currentPath() + QStringLiteral("/bench-XXXXXX")) {
        PrepareFolder(quiet, m_folder.path(), 1, present);
        Connection connection(database());
        connection.execute(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT %1 + 1 UNION ALL SELECT i + 1 FROM n WHERE i < %2) "
                "INSERT INTO ProjectInfo (Project_Name, Project_Number, Active) SELECT "
                "CASE WHEN i >= %3 THEN '%4 ' || i ELSE 'Project ' || (i * 7919 % %2) || ' for "
                "somebody' "
                "END, '100' || i, i % 5 > 0 FROM n")
                .arg(ProjectNames().size())
                .arg(projects)
                .arg(firstWanted)
                .arg(wanted));
    }
    ~ProjectFolder() { UnloadDataBase(); }
    ProjectFolder(const ProjectFolder&) = delete;
    ProjectFolder& operator=(const ProjectFolder&) = delete;

    void open() const {
        UnloadDataBase();
        SetAppPath(m_folder.path());
        m_quiet.openSettings(InAppPath(QString::fromLatin1(files::Settings)));
        ProjectDatabase = database();
        WireDataBase();
        OpenDataBase();
    }
    QString database() const {
        return QDir(m_folder.path()).filePath(QString::fromLatin1(files::ProjectDatabase));
    }

  private:
    QuietPorts& m_quiet;
    QTemporaryDir m_folder;
};

void view(const char* key) {
    Manager().smuiPanel0.click(QString::fromLatin1(key));
}

void find() {
    Manager().smuiFind.edit(QStringLiteral("FIND"), QString());
    Manager().smuiFind.edit(QStringLiteral("FIND"), wanted);
    Find();
}

using Folder = std::shared_ptr<ProjectFolder>;
using Step = std::function<void(const ProjectFolder&)>;

void add(const Folder& folder, const std::string& name, const Step& prepare, const Step& step) {
    benchmark::RegisterBenchmark((name + '/' + std::to_string(projects)).c_str(),
                                 [folder, prepare, step](benchmark::State& state) {
                                     folder->open();
                                     prepare(*folder);
                                     for (auto iteration : state) {
                                         static_cast<void>(iteration);
                                         step(*folder);
                                     }
                                     UnloadDataBase();
                                 })
        ->UseRealTime()
        ->Repetitions(7)
        ->MinTime(0.1);
}

} // namespace

std::vector<Limit> AddProjectBenchmarks(QuietPorts& quiet, QDate present) {
    const auto folder = std::make_shared<ProjectFolder>(quiet, present);
    const Step nothing = [](const ProjectFolder&) {};
    const Step onePass = [](const ProjectFolder& on) { FloorProjectPass(on.database(), wanted); };
    add(folder, opening, nothing, [](const ProjectFolder& on) { on.open(); });
    add(folder, filling, nothing, [](const ProjectFolder&) {
        view("LIST_VIEW");
        view("SINGLE_VIEW");
    });
    add(folder, std::string(filling) + " floor", nothing, onePass);
    const Step list = [](const ProjectFolder&) { view("LIST_VIEW"); };
    add(folder, sorting, list, [](const ProjectFolder&) { listview1_ColumnClick(0); });
    add(folder, findInRecords, nothing, [](const ProjectFolder&) { find(); });
    add(folder, std::string(findInRecords) + " floor", nothing, onePass);
    add(folder, findInList, list, [](const ProjectFolder&) { find(); });
    return {{opening, 0, 1000, false},
            {filling, 0, 1000, false},
            {sorting, 0, 100, false},
            {findInRecords, 2, 0, false},
            {findInList, 0, 100, false}};
}

} // namespace kelvrane::bench
