#include "records/project_lookup.h"

#include "frame/recent_projects.h"
#include "platform/ports.h"
#include "records/record_tables.h"

namespace kelvrane {

namespace {

QString criterionOf(const QString& name) {
    return QStringLiteral("Project_Name = '") + name + QLatin1Char('\'');
}

/// On to the next project of that name; false at the end.
bool findNext(Recordset& projects, const QString& name) {
    projects.moveNext();
    if (projects.atEnd())
        return false;
    projects.find(criterionOf(name));
    return !projects.atEnd();
}

void sayMissing(const QString& name) {
    MsgBox(QStringLiteral("There is no project \"") + name +
           QStringLiteral("\" in the project database any more.  It was taken from the list of "
                          "recent projects, and nothing was changed."));
}

void saySeveral(const QString& name) {
    MsgBox(QStringLiteral("Several projects are named \"") + name +
           QStringLiteral("\".  Choose the one you mean under \"More ...\": the list of recent "
                          "projects then shows its number, too."));
}

} // namespace

ProjectFound FindProject(Recordset& projects, const QString& name, const QString& number) {
    if (projects.isEmpty())
        return ProjectFound::No;
    const int before = projects.position();
    if (before >= 1 && !number.isEmpty() && projects.text(project_column::Name) == name &&
        projects.text(project_column::Number) == number)
        return ProjectFound::Yes;
    projects.moveFirst();
    projects.find(criterionOf(name));
    if (projects.atEnd()) {
        projects.setPosition(before >= 1 ? before : 1);
        return ProjectFound::No;
    }
    const int first = projects.position();
    int found = 0;
    do {
        ++found;
        if (!number.isEmpty() && projects.text(project_column::Number) == number)
            return ProjectFound::Yes;
    } while (findNext(projects, name));
    projects.setPosition(first);
    return found == 1 ? ProjectFound::Yes : ProjectFound::Several;
}

bool FindChosenProject(Recordset& projects, const QString& name, const QString& number) {
    switch (FindProject(projects, name, number)) {
    case ProjectFound::Yes:
        return true;
    case ProjectFound::No:
        RemoveRecentProject(name, number);
        sayMissing(name);
        return false;
    case ProjectFound::Several:
        saySeveral(name);
        return false;
    }
    return false;
}

QString NumberIfShared(Recordset& projects) {
    const int position = projects.position();
    const QString name = projects.text(project_column::Name);
    const QString number = projects.text(project_column::Number);
    projects.moveFirst();
    projects.find(criterionOf(name));
    const bool shared = projects.position() != position || findNext(projects, name);
    projects.setPosition(position);
    return shared ? number : QString();
}

} // namespace kelvrane
