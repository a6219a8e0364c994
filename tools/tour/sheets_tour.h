// The part of the tour that makes timesheets and invoices, files them in a collection, views, edits
// and prints them. It leaves the sheets as HTML and PDF beside the pictures.
#pragma once

#include "tour.h"

#include <QPageSize>

namespace kelvrane {
class Program;
class Spreadsheet;
} // namespace kelvrane

namespace kelvrane::tour {

/// Prints into PDF files of the tour's folder.
class TourPrinter final : public Printer {
  public:
    explicit TourPrinter(QString folder) : m_folder(std::move(folder)) {}
    /// What the next document is called, and on what paper.
    void prepare(const QString& name, QPageSize::PageSizeId paper);
    bool choose(const QString& title) override;
    bool print(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint) override;

  private:
    QString m_folder;
    QString m_name = QStringLiteral("sheet");
    QPageSize::PageSizeId m_paper = QPageSize::A4;
    int m_printed = 0;
};

class SheetsTour {
  public:
    SheetsTour(Album& album, Program& program, TourPrinter& printer, QString folder)
        : m_album(album), m_program(program), m_printer(printer), m_folder(std::move(folder)) {}

    void run();

  private:
    QWidget* screen(Screen name) const;
    void picture(const char* name, Screen which);
    void keepHtml(const char* name, const Spreadsheet& sheet) const;

    /// What the sheet shows, on A4 and on Letter.
    void print(const char* name);

    void week();
    void screenParts();
    void collectionPlace();
    void invoices();
    void viewer();

    Album& m_album;
    Program& m_program;
    TourPrinter& m_printer;
    QString m_folder;
};

} // namespace kelvrane::tour
