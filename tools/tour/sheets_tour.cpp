#include "sheets_tour.h"

#include "app/program.h"
#include "collections/collection_location.h"
#include "collections/viewer_model.h"
#include "frame/program_folder.h"
#include "timesheets/database_list.h"
#include "timesheets/spreadsheet_model.h"
#include "timesheets/spreadsheet_screen.h"
#include "timesheets/template_files.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QPdfWriter>
#include <QTimer>

namespace kelvrane::tour {

namespace {

QString T(const char* text) {
    return QString::fromLatin1(text);
}

void command(const char* key) {
    Sheets().SmartToolBar.click(T(key));
}

void option(const char* key, const char* value) {
    Sheets().SmartToolbox.edit(T(key), T(value));
}

} // namespace

void TourPrinter::prepare(const QString& name, QPageSize::PageSizeId paper) {
    m_name = name;
    m_paper = paper;
    m_printed = 0;
}

bool TourPrinter::choose(const QString& /*title*/) {
    return true;
}

bool TourPrinter::print(const QString& /*title*/,
                        const std::function<void(QPagedPaintDevice&)>& paint) {
    const QString number = m_printed++ > 0 ? QString::number(m_printed) : QString();
    QPdfWriter writer(m_folder + QLatin1Char('/') + m_name + number + QStringLiteral(".pdf"));
    writer.setPageSize(QPageSize(m_paper));
    paint(writer);
    return true;
}

QWidget* SheetsTour::screen(Screen name) const {
    return m_program.screens().widget(name);
}

void SheetsTour::picture(const char* name, Screen which) {
    m_album.picture(T(name), screen(which));
}

void SheetsTour::keepHtml(const char* name, const Spreadsheet& sheet) const {
    QFile file(m_folder + QLatin1Char('/') + T(name) + QStringLiteral(".htm"));
    if (file.open(QIODevice::WriteOnly))
        file.write(sheet.HTMLData().toUtf8());
}

void SheetsTour::print(const char* name) {
    for (const auto paper : {QPageSize::A4, QPageSize::Letter}) {
        m_printer.prepare(T(name) + QPageSize(paper).key(), paper);
        command("TIMESHEET_PRINT");
    }
}

void SheetsTour::run() {
    ports.screens->show(Screen::frmSpreadsheet);
    picture("sheet-empty", Screen::frmSpreadsheet);
    week();
    screenParts();
    collectionPlace();
    invoices();
    ports.screens->unload(Screen::frmSpreadsheet);
    viewer();
}

void SheetsTour::week() {
    command("TEMPALTE_VIEW_CUR");
    picture("sheet-template", Screen::frmSpreadsheet);
    command("VIEW_TEMPLATE_SETUP");
    SheetDateClick(QDate(2026, 2, 23));
    picture("sheet-week", Screen::frmSpreadsheet);
    keepHtml("timesheet", Sheets().ss1);
    print("timesheet-");
}

void SheetsTour::screenParts() {
    command("STARTINGDATE");
    picture("sheet-calendar", Screen::frmSpreadsheet);
    HideSheetCalendar();
    m_album.withBoxes({{T("sheet-message"), T("OK")}}, [] { option("CALCNUMDAYS", "0"); });
    smuiSelectDBs_ItemClick(T("1"));
    ModifyDatabase();
    picture("sheet-database", Screen::frmSSHelper);
    ports.screens->unload(Screen::frmSSHelper);
}

void SheetsTour::collectionPlace() {
    const QString folder = InAppPath(T("Invoices"));
    QDir().mkpath(folder);
    command("SEL_COL_LOC");
    CollectionPlace().goTo(folder);
    CollectionPlace().smuiCollLoc.edit(T("DIRLOC"), folder);
    CollectionPlace().smuiCollLoc.edit(T("FILENAME"), T("February"));
    picture("collection-location", Screen::frmCollectionLoc);
    CollectionPlace().smuiToolBar.click(T("SELECT"));
}

void SheetsTour::invoices() {
    SetDefaultTemplate(
        QDir(InAppPath(T(files::DataFolder))).filePath(QStringLiteral("Invoice.htm")));
    option("SORTORDER", "By Customer");
    picture("sheet-invoice", Screen::frmSpreadsheet);
    keepHtml("invoice", Sheets().ss1);
    print("invoice-");
    // The second time each name is in the collection already.
    QTimer poll;
    int clashes = 0;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        QWidget* clash = screen(Screen::frmFileExists);
        if (!clash || !clash->isVisible())
            return;
        if (++clashes == 1)
            m_album.picture(T("file-exists"), clash);
        clash->findChild<QAbstractButton*>(T("cmdOverwrite"))->click();
    });
    poll.start(10);
    command("TIMESHEET_CALCULATE");
    SheetDateClick(QDate(2025, 12, 1));
    option("CALCNUMDAYS", "60");
    picture("sheet-long-invoice", Screen::frmSpreadsheet);
    print("long-invoice-");
}

void SheetsTour::viewer() {
    ports.screens->show(Screen::frmCollectionViewer);
    picture("collection-view", Screen::frmCollectionViewer);
    Viewer().smuiToolBar.click(T("DM_EDIT"));
    picture("collection-edit", Screen::frmCollectionViewer);
    Viewer().ss1.edit([](Worksheet& sheet) { sheet.enter({0, 0}, T("Corrected")); });
    m_album.withBoxes({{T("collection-save"), T("No")}},
                      [] { Viewer().smuiToolBar.click(T("DM_PRINT")); });
    Viewer().smuiToolBar.click(T("P_SELECT"));
    picture("collection-print", Screen::frmCollectionViewer);
    m_printer.prepare(T("collection"), QPageSize::A4);
    Viewer().smuiToolBar.click(T("P_PRINT"));
    ports.screens->unload(Screen::frmCollectionViewer);
}

} // namespace kelvrane::tour
