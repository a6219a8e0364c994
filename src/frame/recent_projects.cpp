#include "frame/recent_projects.h"

#include "frame/globals.h"
#include "frame/settings.h"
#include "platform/ports.h"

#include <algorithm>

namespace kelvrane {

namespace {

QString valueName(qsizetype place) {
    return QStringLiteral("File") + QString::number(place);
}

QString numberName(qsizetype place) {
    return QStringLiteral("Number") + QString::number(place);
}

/// A stored name or number as it went in: a read leaves the terminator on a numeric text.
QString storedText(const QString& value) {
    const QString text = RegQueryValue(keys::RecentInfo, value);
    const qsizetype terminator = text.indexOf(QChar::Null);
    return terminator < 0 ? text : text.left(terminator);
}

QList<RecentProject> recentList() {
    QList<RecentProject> list;
    for (qsizetype i = 0; i < RecentProjects.size(); ++i)
        list.append({RecentProjects[i], RecentNumbers.value(i)});
    return list;
}

/// A name without a number stands for the project of that name whatever its number.
bool isSame(const RecentProject& held, const RecentProject& project) {
    return held.name == project.name &&
           (held.number == project.number || held.number.isEmpty() || project.number.isEmpty());
}

qsizetype placeOf(const QList<RecentProject>& list, const RecentProject& project) {
    const auto found = std::ranges::find_if(
        list, [&](const RecentProject& held) { return isSame(held, project); });
    return found == list.end() ? -1 : found - list.begin();
}

/// The list with the project first: what stood before its old place moves down by one, the rest
/// stays. Places are 1-based here, as in the settings.
QList<RecentProject> withFirst(const QList<RecentProject>& list, const RecentProject& project,
                               qsizetype limit) {
    QList<RecentProject> result{project};
    qsizetype place = 2;
    for (; place <= limit && !isSame(list[place - 2], project); ++place)
        result.append(list[place - 2]);
    for (; place <= limit; ++place)
        result.append(list[place - 1]);
    return result;
}

void writeText(const QString& value, const QString& text) {
    LastFileStatus = RegSetKeyValue(keys::RecentInfo, value, text);
}

void keep(const QList<RecentProject>& list) {
    RecentProjects.clear();
    RecentNumbers.clear();
    ports.settings->beginChanges();
    for (const RecentProject& project : list) {
        RecentProjects.append(project.name);
        RecentNumbers.append(project.number);
        const qsizetype place = RecentProjects.size();
        writeText(valueName(place), project.name);
        if (!project.number.isEmpty() || !storedText(numberName(place)).isEmpty())
            writeText(numberName(place), project.number);
    }
    NoRecentProjects = list.isEmpty();
    if (!ports.settings->endChanges())
        LastFileStatus = status::Failed;
}

} // namespace

Int16 LoadRecentProjects(Int16 Count) {
    if (NoRecentProjects)
        return status::NoRecentProjects;
    for (int place = 1; place <= Count; ++place) {
        const QString name = storedText(valueName(place));
        if (name.isEmpty())
            break;
        RecentProjects.resize(place);
        RecentProjects.last() = name;
        RecentNumbers.resize(place);
        RecentNumbers.last() = storedText(numberName(place));
    }
    return status::Done;
}

QStringList ProjectChoices() {
    QStringList choices;
    if (LoadRecentProjects(ShowNumProjects) == status::Done)
        for (qsizetype place = 0; place < RecentProjects.size(); ++place)
            choices.append(RecentLabel(place));
    return choices << MoreProjects;
}

QString RecentLabel(qsizetype place) {
    const QString number = RecentNumbers.value(place);
    return number.isEmpty()
               ? RecentProjects[place]
               : RecentProjects[place] + QStringLiteral(" (") + number + QLatin1Char(')');
}

RecentProject RecentProjectOf(qsizetype place, const QString& label) {
    const auto shows = [&](qsizetype at) {
        return at >= 0 && at < RecentProjects.size() && RecentLabel(at) == label;
    };
    for (qsizetype at = 0; !shows(place) && at < RecentProjects.size(); ++at)
        if (shows(at))
            place = at;
    return shows(place) ? RecentProject{RecentProjects[place], RecentNumbers.value(place)}
                        : RecentProject{label};
}

void AddRecentProject(const QString& Name, const QString& number) {
    const RecentProject project{Name, number};
    QList<RecentProject> list;
    if (!NoRecentProjects)
        list = recentList();
    if (list.isEmpty()) { // also: a limit that can't be read, though projects are stored
        keep({project});
        return;
    }
    if (list.first() == project)
        return;
    const qsizetype count = list.size();
    const bool found = placeOf(list, project) >= 0;
    const qsizetype limit = count >= ShowNumProjects ? qsizetype(ShowNumProjects)
                            : found                  ? count
                                                     : count + 1;
    keep(withFirst(list, project, std::max<qsizetype>(limit, 1)));
}

void RemoveRecentProject(const QString& name, const QString& number) {
    LoadRecentProjects(ShowNumProjects);
    QList<RecentProject> list = NoRecentProjects ? QList<RecentProject>() : recentList();
    const qsizetype place = placeOf(list, {name, number});
    if (place < 0)
        return;
    list.removeAt(place);
    ports.settings->beginChanges();
    keep(list);
    writeText(valueName(list.size() + 1), {}); // ends the list
    if (!ports.settings->endChanges())
        LastFileStatus = status::Failed;
}

void SetRecentProject(qsizetype place, const RecentProject& project) {
    QList<RecentProject> list = recentList();
    if (place < 0 || place >= list.size() || list[place] == project)
        return;
    list[place] = project;
    keep(list);
}

} // namespace kelvrane
