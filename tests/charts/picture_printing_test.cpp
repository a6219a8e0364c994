#include "charts/chart_fixture.h"
#include "charts/chart_pictures.h"
#include "charts/picture_printing.h"
#include "support/raised_error.h"

#include <QBuffer>
#include <QFile>
#include <QPdfWriter>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

TEST(FitToPage, FillsTheWidthOrTheHeight) {
    const struct {
        QSizeF picture, page, printed;
    } rows[] = {
        {{200, 100}, {100, 100}, {100, 50}},
        {{100, 200}, {100, 100}, {50, 100}},
        {{10, 10}, {300, 200}, {200, 200}},
        {{640, 480}, {640, 480}, {640, 480}},
        {{3, 1}, {2, 1}, {2, 2 / 3.0}},
        {{0, 10}, {10, 10}, {}},
        {{10, 10}, {0, 10}, {}},
    };
    for (const auto& row : rows) {
        const QSizeF printed = FitToPage(row.picture, row.page);
        EXPECT_DOUBLE_EQ(printed.width(), row.printed.isEmpty() ? -1 : row.printed.width());
        EXPECT_DOUBLE_EQ(printed.height(), row.printed.isEmpty() ? -1 : row.printed.height());
    }
    EXPECT_EQ(OrientationFor({10, 10}), QPageLayout::Portrait);
    EXPECT_EQ(OrientationFor({11, 10}), QPageLayout::Landscape);
}

/// The page of a PDF, and where its one picture stands, in points from the lower left corner.
struct PrintedPage {
    QSizeF paper;
    QRectF picture;
};

QByteArray unpacked(const QByteArray& pdf, qsizetype from) {
    const qsizetype start = pdf.indexOf("stream", from) + 7;
    QByteArray packed = pdf.mid(start, pdf.indexOf("endstream", start) - start);
    packed.prepend(QByteArray::fromHex("00100000")); // a guess at the size is all that is asked
    return qUncompress(packed);
}

PrintedPage pageOf(const QByteArray& pdf) {
    const QString text = QString::fromLatin1(pdf);
    const auto box = QRegularExpression("/MediaBox \\[0 0 ([\\d.]+) ([\\d.]+)\\]").match(text);
    const auto contents = QRegularExpression("/Contents (\\d+) 0 R").match(text);
    EXPECT_TRUE(box.hasMatch() && contents.hasMatch());
    const QString drawing = QString::fromLatin1(
        unpacked(pdf, pdf.indexOf(QByteArray("\n" + contents.captured(1).toLatin1() + " 0 obj"))));
    const qsizetype end = drawing.indexOf(" Do");
    EXPECT_GT(end, 0) << drawing.toStdString();
    QList<QTransform> open{{}}; // the matrices in force, saved ones below
    static const QRegularExpression tokens(
        "(^|\\s)(q|Q)(?=\\s)|([-\\d.]+) ([-\\d.]+) ([-\\d.]+) ([-\\d.]+) ([-\\d.]+) ([-\\d.]+) cm");
    for (auto found = tokens.globalMatch(drawing.left(end)); found.hasNext();) {
        const auto token = found.next();
        if (token.captured(2) == "q") {
            open.append(open.last());
        } else if (token.captured(2) == "Q") {
            open.removeLast();
        } else {
            const auto number = [&](int i) { return token.captured(2 + i).toDouble(); };
            open.last() =
                QTransform(number(1), number(2), number(3), number(4), number(5), number(6)) *
                open.last();
        }
    }
    return {QSizeF(box.captured(1).toDouble(), box.captured(2).toDouble()),
            open.last().mapRect(QRectF(0, 0, 1, 1))};
}

PrintedPage printed(const QSize& size) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    QPdfWriter writer(&document);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(20, 30, 40, 50), QPageLayout::Point);
    PrintPictureToFitPage(writer, picture);
    EXPECT_EQ(writer.pageLayout().orientation(), QPageLayout::Portrait) << "as it was";
    document.close();
    return pageOf(document.data());
}

TEST(PrintPictureToFitPage, PlacesThePictureOnARealPage) {
    const struct {
        QSize picture;
        QSizeF paper;
    } rows[] = {{{900, 300}, {842, 595}}, {{300, 900}, {595, 842}}, {{400, 400}, {595, 842}}};
    for (const auto& row : rows) {
        const PrintedPage page = printed(row.picture);
        EXPECT_EQ(page.paper.toSize(), row.paper.toSize());
        const QRectF free(20, 50, page.paper.width() - 60, page.paper.height() - 80);
        const QSizeF wanted = FitToPage(row.picture, free.size());
        EXPECT_NEAR(page.picture.left(), free.left(), 1);
        EXPECT_NEAR(page.picture.bottom(), free.bottom(), 1) << "points count upwards";
        EXPECT_NEAR(page.picture.width(), wanted.width(), 1);
        EXPECT_NEAR(page.picture.height(), wanted.height(), 1);
    }
}

class ChartPicturesTest : public ChartTest {
  protected:
    ChartPicturesTest() {
        addDays();
        LoadChart();
        QObject::connect(&Charts(), &ChartModel::PictureWanted, &screen, [this] {
            ++taken;
            Charts().picForm = QImage(40, 20, QImage::Format_RGB32);
            Charts().picForm.fill(QColor(10, 20, 30));
        });
    }
    QObject screen;
    int taken = 0;
};

TEST_F(ChartPicturesTest, SavesABitmapUnderTheStartDate) {
    dialogs.expectFile(path("chart.bmp"));
    press("mnuSaveAs");
    ASSERT_EQ(dialogs.fileQuestions.size(), 1);
    EXPECT_EQ(dialogs.fileQuestions[0].fileName, "TK_3_2_2026.bmp");
    EXPECT_EQ(dialogs.fileQuestions[0].defaultExtension, ".bmp");
    EXPECT_EQ(dialogs.fileQuestions[0].filter, "Bitmaps|*.bmp");
    EXPECT_TRUE(fileBytes("chart.bmp").startsWith("BM"));
    const QImage saved(path("chart.bmp"), "BMP");
    EXPECT_EQ(saved.size(), QSize(40, 20));
    EXPECT_EQ(saved.pixelColor(5, 5), QColor(10, 20, 30));
}

TEST_F(ChartPicturesTest, AFileThatExistsIsReplacedOnYesAlone) {
    writeFile("old.bmp", "old");
    dialogs.expectFile(path("old.bmp"));
    dialogs.expect("File Exists, Overwrite this file?", BoxAnswer::No);
    dialogs.expectFile(std::nullopt);
    press("mnuSaveAs");
    EXPECT_EQ(lastBox().title, "File Exists");
    EXPECT_EQ(dialogs.fileQuestions.size(), 2) << "asked again";
    EXPECT_EQ(fileBytes("old.bmp"), "old");

    dialogs.expectFile(path("old.bmp"));
    dialogs.expect("File Exists, Overwrite this file?", BoxAnswer::Yes);
    press("mnuSaveAs");
    EXPECT_TRUE(fileBytes("old.bmp").startsWith("BM"));
    EXPECT_EQ(taken, 2) << "once a command, before the dialog";
}

TEST_F(ChartPicturesTest, AFileThatCantBeWrittenIsToldAndNothingIsLost) {
    writeFile("locked.bmp", "old");
    QFile::setPermissions(path("locked.bmp"), QFile::ReadOwner);
    dialogs.expectFile(path("locked.bmp"));
    dialogs.expect("Overwrite", BoxAnswer::Yes);
    dialogs.expect("smuiToolBar_Click");
    press("mnuSaveAs");
    EXPECT_EQ(fileBytes("locked.bmp"), "old");
    dialogs.expectFile(path("nowhere/chart.bmp"));
    dialogs.expect("smuiToolBar_Click");
    press("mnuSaveAs");
}

TEST_F(ChartPicturesTest, PrintsOnThePrinterChosen) {
    printer.chooses = false;
    press("mnuPrint");
    EXPECT_TRUE(printer.documents.isEmpty());
    printer.chooses = true;
    press("mnuPrint");
    ASSERT_EQ(printer.documents.size(), 1);
    const PrintedPage page = pageOf(printer.documents[0]);
    EXPECT_GT(page.paper.width(), page.paper.height());
    EXPECT_NEAR(page.picture.width() / page.picture.height(), 2, 0.01);
}

TEST_F(ChartPicturesTest, WithoutAScreenThereIsNoPicture) {
    QObject::disconnect(&Charts(), &ChartModel::PictureWanted, &screen, nullptr);
    EXPECT_EQ(RaisedError(mnuSaveAs), errors::NoObject);
    EXPECT_EQ(RaisedError([] {
                  QPdfWriter none("unused.pdf");
                  PrintPictureToFitPage(none, {});
              }),
              errors::BadArgument);
}

} // namespace
} // namespace kelvrane::testing
