#include "startup/first_run_data.h"

#include "frame/help_topics.h"
#include "frame/program_folder.h"
#include "frame/trace.h"
#include "history/day_history.h"
#include "platform/ports.h"
#include "platform/recordset.h"
#include "platform/skip_errors.h"
#include "platform/texts.h"
#include "timevalues/time_values.h"

#include <QDir>

namespace kelvrane {

namespace {

constexpr int daysBack = 8; ///< the day before the first example day, counted from today

struct StarterFile {
    QString place;   ///< in the program's folder
    QString aside;   ///< where the user's file goes
    QString starter; ///< the prepared copy
};

StarterFile starterFile(const char* name, const char* starterName) {
    const QString place = InAppPath(QString::fromLatin1(name));
    return {place, place + QStringLiteral(".orig"),
            InAppPath(QString::fromLatin1(files::StarterFolder)) + QDir::separator() +
                QString::fromLatin1(starterName)};
}

void checkFiles(const StarterFile& file) {
    for (const QString& path : {file.place, file.starter})
        if (!ports.files->exists(path))
            Raise(errors::FileNotFound, path + QStringLiteral(": there is no such file"));
    if (ports.files->exists(file.aside))
        Raise(errors::FileExists, file.aside + QStringLiteral(": the file is already there"));
    Connection settled(file.place); // a journal that a crash left must not meet another file
}

void moveDates(const QString& path) {
    Connection connection(path);
    connection.begin();
    {
        Recordset rows(connection, QStringLiteral("DayInfo"), Recordset::Optimistic);
        const QDate today = ports.clock->today();
        QDate OldDate(2000, 1, 1);
        QDate NewDate = today.addDays(-daysBack);
        while (NewDate != today.addDays(-1)) {
            NewDate = DateFromText(StepDate(NewDate, 1));
            rows.setPosition(FindRecordByDate(rows, OldDate));
            rows.setValue(QStringLiteral("Date"), NewDate);
            rows.update();
            OldDate = DateFromText(StepDate(OldDate, 1));
        }
    }
    connection.commit();
}

} // namespace

void InitializeDayInfo() {
    SkipErrors step(QStringLiteral("InitializeDayInfo"));
    step([] {
        LogStep(QStringLiteral("Setting DB Connection String"));
        const QString path = DayHistoryPath();
        bool isEmpty = false;
        {
            LogStep(QStringLiteral("Opening Database"));
            Connection connection(path);
            LogStep(QStringLiteral("Database Opened"));
            LogStep(QStringLiteral("Opening Recordset"));
            isEmpty = Recordset(connection, QStringLiteral("DayInfo")).isEmpty();
            LogStep(QStringLiteral("Recordset Opened"));
        }
        if (!isEmpty)
            return;
        LogStep(QStringLiteral("Recordcount = 0"));
        if (Agrees(QStringLiteral("Kelvrane can create example fictitious data to help get "
                                  "acquainted with kelvrane.  Would you like to generate this "
                                  "data?"),
                   QStringLiteral("Generate initial data?")))
            GenerateExampleData();
    });
}

void GenerateExampleData() {
    SkipErrors step(QStringLiteral("GenerateExampleData"));
    step([] {
        const StarterFile all[] = {starterFile(files::DayHistory, files::StarterDayHistory),
                                   starterFile(files::ProjectDatabase, files::ProjectDatabase)};
        for (const StarterFile& file : all)
            checkFiles(file);
        // Set aside as copies and then replaced in one step: after a kill at any instant there is a
        // database in each place.
        for (const StarterFile& file : all)
            ports.files->copy(file.place, file.aside);
        for (const StarterFile& file : all)
            ports.files->copy(file.starter, file.place);
        moveDates(all[0].place);
        const BoxAnswer answer =
            MsgBox(QStringLiteral("Data generated successfully.  Would you like more information "
                                  "on the data which was generated?"),
                   QStringLiteral("Need more information?"), BoxIcon::None, BoxButtons::YesNo);
        if (answer == BoxAnswer::Yes)
            ShowHelpTopic(topics::Tutorial);
    });
}

} // namespace kelvrane
