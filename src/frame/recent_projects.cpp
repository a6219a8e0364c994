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

/// The list with the name first: what stood before its old place moves down by one, the rest stays.
/// Places are 1-based here, as in the settings.
QList<QString> withNameFirst(const QList<QString>& list, const QString& name, qsizetype limit) {
    QList<QString> result{name};
    qsizetype place = 2;
    for (; place <= limit && list[place - 2] != name; ++place)
        result.append(list[place - 2]);
    for (; place <= limit; ++place)
        result.append(list[place - 1]);
    return result;
}

} // namespace

Int16 LoadRecentProjects(Int16 Count) {
    if (NoRecentProjects)
        return status::NoRecentProjects;
    for (int place = 1; place <= Count; ++place) {
        const QString name = RegQueryValue(keys::RecentInfo, valueName(place));
        if (name.isEmpty())
            break;
        RecentProjects.resize(place);
        RecentProjects.last() = name;
    }
    return status::Done;
}

QStringList ProjectChoices() {
    const bool any = LoadRecentProjects(ShowNumProjects) == status::Done;
    return (any ? QStringList(RecentProjects) : QStringList()) << MoreProjects;
}

void AddRecentProject(const QString& Name) {
    // A limit that can't be read leaves a list of nothing, though projects are stored.
    const bool none = NoRecentProjects || RecentProjects.isEmpty();
    if (!none && RecentProjects.first() == Name)
        return;
    if (none) {
        RecentProjects = {Name};
    } else {
        const qsizetype count = RecentProjects.size();
        const bool found = RecentProjects.contains(Name);
        const qsizetype limit = count >= ShowNumProjects ? qsizetype(ShowNumProjects)
                                : found                  ? count
                                                         : count + 1;
        RecentProjects = withNameFirst(RecentProjects, Name, std::max<qsizetype>(limit, 1));
    }
    NoRecentProjects = false;
    ports.settings->beginChanges();
    for (qsizetype place = 1; place <= RecentProjects.size(); ++place)
        LastFileStatus =
            RegSetKeyValue(keys::RecentInfo, valueName(place), RecentProjects[place - 1]);
    if (!ports.settings->endChanges())
        LastFileStatus = status::Failed;
}

} // namespace kelvrane
