#include "timesheets/customer_calculation.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/program_folder.h"
#include "history/period_query.h"
#include "platform/escaped_fields.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "records/project_lookup.h"
#include "records/record_tables.h"
#include "timesheets/database_list_file.h"
#include "timesheets/sheet_context.h"
#include "timesheets/sheet_files.h"
#include "timesheets/template_scan.h"
#include "timevalues/time_values.h"
#include "worksheet/number_format.h"
#include "worksheet/spreadsheet.h"

#include <QHash>

namespace kelvrane {

namespace {

const QString noCustomer = QStringLiteral("9999999"); // overflows the list of ids; that is wanted
const QString amountFormat = QStringLiteral("$###0.00");
const QString dayFormat = QStringLiteral("d mmm");

QString dataFile(const QString& id) {
    return AppPath() + QLatin1Char('/') + id + QStringLiteral(".dat");
}

/// Deals rows out to the files of their customers; the files are written at the end.
class Deal {
  public:
    Deal(Recordset& projects, CalculationErrors& errors) : m_projects(projects), m_errors(errors) {}

    /// False when the rest of the database is given up: a project isn't in the project table.
    bool take(Recordset& row) {
        const QString name = row.text(QStringLiteral("ProjectName"));
        const QString number = row.text(QStringLiteral("ProjectNumber"));
        const bool another = name != m_previous || (m_isShared && number != m_previousNumber);
        if (another && !turnTo(name, number))
            return false;
        m_files[m_id] += ToFileBytes(line(row));
        return true;
    }

    void startDatabase() {
        m_previous.clear();
        m_isShared = false;
    }

    void write() {
        for (auto file = m_files.constBegin(); file != m_files.constEnd(); ++file)
            m_errors.step([&] { ports.files->create(dataFile(file.key()), *file); });
    }

  private:
    /// A customer met before keeps the file that is current: the rows go to the customer met last,
    /// and that is wanted.
    bool turnTo(const QString& name, const QString& number) {
        if (FindProject(m_projects, name, number) == ProjectFound::No) {
            MsgBox(QStringLiteral("Customer ID for project name \"") + name +
                   QStringLiteral("\" does not exist, skipping this project."));
            return false;
        }
        m_previous = name;
        m_previousNumber = number;
        m_isShared = !NumberIfShared(m_projects).isEmpty();
        const QString id = m_projects.text(QStringLiteral("CustInfoDBID"));
        if (!id.isEmpty() && CustomerIDs.contains(int(id.toInt())))
            return true;
        m_id = id.isEmpty() ? noCustomer : id;
        CustomerIDs.append(Int16(0));
        m_errors.step([&] { CustomerIDs.last() = ToInt16(m_id); });
        m_files.insert(m_id, {});
        return true;
    }

    static QString line(Recordset& row) {
        const double minutes = ToDouble(row.text(QStringLiteral("TotalTime"))) -
                               ToDouble(row.text(QStringLiteral("BreakTime")));
        return JoinFields({row.text(QStringLiteral("Date")),
                           row.text(QStringLiteral("ProjectName")),
                           row.text(QStringLiteral("ProjectNumber")), DoubleText(minutes)}) +
               QLatin1Char('\n');
    }

    Recordset& m_projects;
    CalculationErrors& m_errors;
    QString m_previous;
    QString m_previousNumber;
    bool m_isShared = false; ///< several projects have the name: the number counts
    QString m_id;
    QHash<QString, QByteArray> m_files;
};

void dealOut(SheetContext& context, Connection& history, QDate endDate, Deal& deal,
             CalculationErrors& errors) {
    deal.startDatabase();
    errors.step([&] {
        Recordset rows(history, PeriodRows(DateFromText(context.startDate), endDate));
        bool goesOn = true;
        for (; goesOn && !rows.atEnd(); rows.moveNext())
            errors.step([&] { goesOn = deal.take(rows); });
    });
}

/// False ends the calculation: the hours of a database can't be had.
bool dealOutEach(SheetContext& context, QDate endDate, Deal& deal, CalculationErrors& errors) {
    QList<QStringList> lines;
    errors.step([&] { lines = database_list_file::Lines(); });
    for (int item = 0; item < context.isAccepted.size(); ++item) {
        if (!context.isAccepted[item])
            continue;
        DatabaseLine line;
        if (!errors.step([&] { line = DatabaseOfItem(lines, item); }))
            continue;
        try {
            Connection history(line.path);
            dealOut(context, history, endDate, deal, errors);
        } catch (const RuntimeError& error) {
            if (!errors.goesOnWithout(line.path, error))
                return false;
        }
    }
    return true;
}

double numberOrNothing(Recordset& rows, const QString& field) {
    const QString text = rows.text(field);
    return text.isEmpty() ? 0 : ToDouble(text);
}

CustomerSheetFields readCustomer(Recordset& customers) {
    const auto text = [&](const char* field) { return customers.text(QString::fromLatin1(field)); };
    CustomerSheetFields fields;
    fields.ID = ToInt16(text("ID"));
    fields.Company = text("Company");
    fields.Title = text("Title");
    fields.FirstName = text("FirstName");
    fields.LastName = text("LastName");
    fields.Address1 = text("Address1");
    fields.Address2 = text("Address2");
    fields.City = text("City");
    fields.State = text("State");
    fields.ZipCode = text("ZipCode");
    return fields;
}

/// Rate and amount of a line. An anchor in column A counts as absent; that is wanted.
void writeAmount(SheetContext& context, Recordset& projects, const QStringList& line, int offset,
                 double discount) {
    if (FindProject(projects, At(line, 1), At(line, 2)) == ProjectFound::No)
        return;
    const SSVariable& hours = SSVariables[anchor::Hours];
    const SSVariable& rate = SSVariables[anchor::Rate];
    const SSVariable& total = SSVariables[anchor::Total];
    const double price = numberOrNothing(projects, QStringLiteral("Rate"));
    if (rate.Col > 0)
        context.sheet.Range(CellName(rate.Col, rate.Row + offset))
            .setValue(FormatCellValue(price * (100 - discount) / 100, amountFormat));
    if (total.Col > 0) {
        const SheetRange cell = context.sheet.Range(CellName(total.Col, total.Row + offset));
        cell.setValue(QStringLiteral("=(") + CellName(hours.Col, hours.Row + offset) +
                      QLatin1Char('*') + CellName(rate.Col, rate.Row + offset) + QLatin1Char(')'));
        const QString amount = cell.Value();
        cell.setValue(IsNumeric(amount) ? FormatCellValue(ToDouble(amount), amountFormat) : amount);
    }
}

void writeLine(SheetContext& context, Recordset& projects, const QStringList& line, int offset,
               double discount, const QString& increment) {
    const SSVariable& day = SSVariables[anchor::Day];
    const SSVariable& name = SSVariables[anchor::Name];
    const SSVariable& hours = SSVariables[anchor::Hours];
    if (day.Col != -1) {
        const SheetRange cell = context.sheet.Range(CellName(day.Col, day.Row + offset));
        cell.setNumberFormat(dayFormat);
        const QDate date = DateFromText(At(line, 0));
        cell.setValue(date.isValid() ? FormatCellValue(DateSerial(date), dayFormat) : line[0]);
    }
    context.sheet.Range(CellName(name.Col, name.Row + offset)).setValue(At(line, 1));
    const SheetRange cell = context.sheet.Range(CellName(hours.Col, hours.Row + offset));
    cell.setValue(RoundToIncrement(float(ToDouble(At(line, 3))), increment));
    cell.setHorizontalAlignment(SheetRange::Center);
    writeAmount(context, projects, line, offset, discount);
}

QList<QStringList> readDataFile(const QString& path) {
    QList<QStringList> lines;
    for (const QString& line : FromFileBytes(ports.files->read(path)).split(QLatin1Char('\n')))
        if (!line.isEmpty())
            lines.append(SplitFields(line));
    return lines;
}

void buildSheet(SheetContext& context, OpenTable& customers, OpenTable& projects, Int16 id,
                const QString& increment) {
    customers.rows.moveFirst();
    customers.rows.find(QStringLiteral("ID = '") + QString::number(id) + QLatin1Char('\''));
    const CustomerSheetFields fields = readCustomer(customers.rows);
    const double discount = numberOrNothing(customers.rows, QStringLiteral("Discount"));
    FillCustomerVariables(context.sheet, fields);
    const QString data = dataFile(QString::number(id));
    int offset = 0;
    for (const QStringList& line : readDataFile(data))
        writeLine(context, projects.rows, line, offset++, discount, increment);
    context.addSheet(fields.Company);
    ports.files->remove(data, true);
}

} // namespace

void SetUpByCustomerCalculations(SheetContext& context, QDate endDate, const QString& increment) {
    CalculationErrors errors(QStringLiteral("SetUpByCustomerCalculations"));
    CustomerIDs.clear();
    try {
        OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
        Deal deal(projects.rows, errors);
        if (!dealOutEach(context, endDate, deal, errors))
            return;
        deal.write();
    } catch (const RuntimeError& error) {
        errors.goesOnWithout(ProjectDatabase, error);
        return;
    }
    context.noData = CustomerIDs.isEmpty();
    if (!context.noData)
        errors.step([&] { BuildCustomerSheets(context, increment); });
}

void BuildCustomerSheets(SheetContext& context, const QString& increment) {
    const QString copy = InAppPath(QString::fromLatin1(sheet_files::CustomerCopy));
    ports.files->create(copy, SheetFileBytes(context.sheet));
    OpenTable customers(ProjectDatabase, QStringLiteral("CustomerInfo"), Recordset::ReadOnly);
    OpenTable projects(ProjectDatabase, QStringLiteral("ProjectInfo"), Recordset::ReadOnly);
    const QList<Int16> ids = CustomerIDs; // filing a sheet lets events through
    for (const Int16 id : ids) {
        context.sheet.setHTMLURL(context.templatePath);
        if (customers.rows.isEmpty())
            break;
        buildSheet(context, customers, projects, id, increment);
    }
    ports.files->remove(copy, true);
}

} // namespace kelvrane
