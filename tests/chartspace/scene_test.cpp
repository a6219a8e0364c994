#include "chartspace/charts_for_tests.h"
#include "chartspace/labels.h"
#include "chartspace/stage.h"

#include <QImage>
#include <QPainter>
#include <QSet>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kelvrane::chartspace {
namespace {

QImage Painted(const Scene& scene, const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    scene.paint(painter);
    return image;
}

/// Pixels that are no shade of grey, as ground, walls, grid and text are.
int ColouredPixels(const QImage& image, const QRectF& within) {
    const QRect area = within.toAlignedRect() & image.rect();
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixelColor(x, y).saturation() > 60 ? 1 : 0;
    return count;
}

QPointF CentreOf(const Mark& mark) {
    return mark.outline.boundingRect().center();
}

/// What is behind "Value: ": the whole rest, or of a pie what stands before the bracket.
double NumberIn(const QString& tip, bool pie) {
    const auto from = tip.lastIndexOf(QStringLiteral("Value: ")) + 7;
    const auto to = pie ? tip.lastIndexOf(QLatin1Char('(')) - 1 : tip.size();
    bool ok = false;
    const double number = tip.mid(from, to - from).toDouble(&ok);
    EXPECT_TRUE(ok) << tip.toStdString();
    return number;
}

class EveryType : public testing::TestWithParam<ChartType> {
  protected:
    void SetUp() override { projectHues.reset(); }
};

INSTANTIATE_TEST_SUITE_P(Charts, EveryType, testing::ValuesIn(allTypes));

TEST_P(EveryType, ShowsEveryValueOfTheFirstSeries) {
    for (const int count : {1, 30}) {
        const Scene scene = SceneOf(SampleChart(GetParam(), count));
        QSet<int> shown;
        for (const Mark& mark : scene.marks())
            if (mark.series == 0) {
                shown.insert(mark.category);
                EXPECT_TRUE(
                    scene.plot().adjusted(-3, -3, 3, 3).contains(mark.outline.boundingRect()));
            }
        EXPECT_EQ(shown.size(), count);
        EXPECT_GT(ColouredPixels(Painted(scene, {480, 300}), scene.plot()), 500);
    }
}

TEST_P(EveryType, ShowsOnlyTheEmptyTextWithoutData) {
    Chart chart = SampleChart(GetParam(), 0);
    chart.title = QStringLiteral("Today");
    const Scene scene = SceneOf(chart);
    ASSERT_EQ(scene.labels().size(), 1);
    EXPECT_EQ(scene.labels()[0].text, QStringLiteral("No Data"));
    EXPECT_TRUE(scene.marks().isEmpty());
    EXPECT_FALSE(scene.hitTest({240, 150}));
}

TEST_P(EveryType, LabelsStayOnTheSheetAndOffEachOther) {
    const QSizeF sizes[] = {{150, 100}, {300, 180}, {480, 300}, {900, 500}, {260, 600}};
    QList<View3D> views{{}};
    if (FormOf(GetParam()).solid)
        views += {{0, 0, 0}, {65, 50, 40}, {90, 15, 20}, {140, -35, 80}, {180, 90, 20}};
    for (const QSizeF& size : sizes)
        for (const int count : {1, 2, 7, 30, 200})
            for (const bool legend : {false, true})
                for (const View3D& view : views) {
                    Chart chart = SampleChart(GetParam(), count);
                    chart.legend = legend;
                    chart.title = legend ? QStringLiteral("A day in the office") : QString();
                    chart.view = view;
                    const Scene scene = SceneOf(chart, size);
                    const QList<Label>& labels = scene.labels();
                    for (int i = 0; i < labels.size(); ++i) {
                        ASSERT_TRUE(QRectF(-1, -1, size.width() + 2, size.height() + 2)
                                        .contains(labels[i].outline().boundingRect()))
                            << labels[i].text.toStdString();
                        for (const QString& line : labels[i].text.split(QLatin1Char('\n')))
                            ASSERT_LE(QFontMetricsF(labels[i].font).horizontalAdvance(line),
                                      labels[i].box.width() + 0.5);
                        for (int j = 0; j < i; ++j)
                            ASSERT_FALSE(Overlap(labels[i], labels[j]))
                                << labels[i].text.toStdString() << " and "
                                << labels[j].text.toStdString() << " at " << size.width();
                    }
                }
}

TEST_P(EveryType, TopmostMarkAnswersWithItsValue) {
    const Chart chart = SampleChart(GetParam(), 4);
    const bool pie = FormOf(GetParam()).family == Family::Pie;
    const Scene scene = SceneOf(chart, {600, 400});
    int asked = 0;
    for (const Mark& mark : scene.marks()) {
        if (mark.series < 0 || !mark.outline.containsPoint(CentreOf(mark), Qt::OddEvenFill))
            continue;
        const auto hit = scene.hitTest(CentreOf(mark));
        ASSERT_TRUE(hit);
        const double value = chart.series[hit->series].values[hit->category];
        EXPECT_DOUBLE_EQ(NumberIn(hit->text, pie), value);
        EXPECT_TRUE(hit->text.contains(chart.categories[hit->category]));
        ++asked;
    }
    EXPECT_GE(asked, 4);
}

TEST_P(EveryType, HostileNumbersAndNamesDoNoHarm) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Chart chart = SampleChart(GetParam(), 8);
    chart.categories[0].clear();
    chart.categories[1] = QString(10'000, QLatin1Char('W'));
    chart.categories[2] = QStringLiteral("Line\nbreak\tand <b>markup</b> & more (Value: 3)");
    chart.series[0].values = {std::nan(""), infinity, -infinity, -5, 1e308, 1e-300, 2};
    chart.series[1].values = {1e308, 0, -1};
    for (const QSizeF& size : {QSizeF(480, 300), QSizeF(9, 9), QSizeF(0, 0), QSizeF(20, 400)}) {
        const Scene scene = SceneOf(chart, size);
        for (const Mark& mark : scene.marks())
            for (const QPointF& point : mark.outline)
                ASSERT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
        Painted(scene, {480, 300});
    }
    chart.series[0].values = {0, 0, -1};
    chart.series[1].values.clear();
    const Scene nothing = SceneOf(chart);
    for (const Mark& mark : nothing.marks())
        EXPECT_EQ(mark.series, -1) << "what isn't above zero has no mark";
}

TEST(ChartScene, TipsHaveTheirForms) {
    const auto tip = [](ChartType type, int series) {
        Chart chart;
        chart.type = type;
        chart.legend = false;
        chart.categories = {QStringLiteral("Alpha"), QStringLiteral("Beta")};
        chart.series = {{QStringLiteral("Work"), {1.5, 4.5}}, {QStringLiteral("Break"), {0.5, 1}}};
        const Scene scene = SceneOf(chart);
        for (const Mark& mark : scene.marks())
            if (mark.series == series && mark.category == 0)
                return scene.hitTest(CentreOf(mark))->text;
        return QString();
    };
    EXPECT_EQ(tip(ChartType::ColumnStacked, 0), QStringLiteral("Work, Alpha Value: 1.5"));
    EXPECT_EQ(tip(ChartType::BarClustered, 1), QStringLiteral("Break, Alpha Value: 0.5"));
    EXPECT_EQ(tip(ChartType::Pie, 0), QStringLiteral("Alpha Value: 1.5 (25%)"));
    EXPECT_EQ(tip(ChartType::PieStacked, 0), QStringLiteral("Alpha Value: 1.5 (25%)"));
}

TEST(ChartScene, FlatBarsHaveTheLengthOfTheirValues) {
    for (const ChartType type : {ChartType::ColumnClustered, ChartType::BarClustered}) {
        const bool columns = type == ChartType::ColumnClustered;
        Chart chart = SampleChart(type, 3);
        chart.series[0].values = {1, 2, 4};
        const Scene scene = SceneOf(chart);
        QList<double> lengths;
        for (const Mark& mark : scene.marks())
            if (mark.series == 0) {
                const QRectF bounds = mark.outline.boundingRect();
                lengths.append(columns ? bounds.height() : bounds.width());
            }
        ASSERT_EQ(lengths.size(), 3);
        EXPECT_NEAR(lengths[1], 2 * lengths[0], 0.5);
        EXPECT_NEAR(lengths[2], columns ? scene.plot().height() : scene.plot().width(), 0.5);
    }
}

TEST(ChartScene, HundredPercentStacksFillThePlot) {
    for (const ChartType type : {ChartType::ColumnStacked100, ChartType::BarStacked100}) {
        const bool columns = type == ChartType::ColumnStacked100;
        const Scene scene = SceneOf(SampleChart(type, 6));
        QHash<int, QRectF> stacks;
        for (const Mark& mark : scene.marks())
            if (mark.series >= 0)
                stacks[mark.category] |= mark.outline.boundingRect();
        ASSERT_EQ(stacks.size(), 6);
        for (const QRectF& stack : stacks)
            EXPECT_NEAR(columns ? stack.height() : stack.width(),
                        columns ? scene.plot().height() : scene.plot().width(), 0.5);
    }
}

/// How far along the ray the box is entered; infinite when it isn't.
double EntryInto(const Box& box, const Vec3& from, const Vec3& direction) {
    double first = 0;
    double last = std::numeric_limits<double>::infinity();
    for (size_t axis = 0; axis < 3; ++axis) {
        const double a = (box.low[axis] - from[axis]) / direction[axis];
        const double b = (box.high[axis] - from[axis]) / direction[axis];
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
    }
    return first < last ? first : std::numeric_limits<double>::infinity();
}

/// The nearest box at a point of the picture, found by a ray; nullptr when there is none.
const Box* NearestBox(const SolidLayout& layout, const QPointF& point) {
    const Box* nearest = nullptr;
    double distance = std::numeric_limits<double>::infinity();
    for (const Box& box : layout.boxes) {
        const double entry = EntryInto(box, layout.camera.eye(), layout.camera.rayThrough(point));
        if (entry < distance) {
            distance = entry;
            nearest = &box;
        }
    }
    return nearest;
}

TEST(ChartScene, SolidShapesHideWhatIsBehindThem) {
    const ChartTheme theme = PaperTheme();
    const QSizeF size(400, 300);
    int compared = 0;
    for (const ChartType type : allTypes) {
        if (!FormOf(type).solid || FormOf(type).family == Family::Pie)
            continue;
        for (const double rotation : {0.0, 20.0, 75.0, 90.0, 130.0, 180.0})
            for (const double inclination : {-90.0, -30.0, 0.0, 15.0, 60.0, 90.0})
                for (const double perspective : {0.0, 60.0}) {
                    Chart chart = SampleChart(type, 5);
                    chart.view = {rotation, inclination, perspective};
                    const Scene scene(chart, size, theme, SampleFont());
                    Composition composition(chart, size, theme, SampleFont());
                    AddLegend(composition);
                    const auto layout = LayOutSolid(composition);
                    ASSERT_TRUE(layout);
                    for (double x = 3.3; x < size.width(); x += 19)
                        for (double y = 3.7; y < size.height(); y += 19) {
                            const Box* box = NearestBox(*layout, {x, y});
                            // At an edge both answers are right.
                            if (NearestBox(*layout, {x + 0.6, y + 0.6}) != box ||
                                NearestBox(*layout, {x - 0.6, y - 0.6}) != box ||
                                NearestBox(*layout, {x + 0.6, y - 0.6}) != box ||
                                NearestBox(*layout, {x - 0.6, y + 0.6}) != box)
                                continue;
                            const auto hit = scene.hitTest({x, y});
                            ASSERT_EQ(box != nullptr, hit.has_value());
                            if (!box)
                                continue;
                            ++compared;
                            ASSERT_EQ(hit->series, box->series) << rotation << " " << inclination;
                            ASSERT_EQ(hit->category, box->category);
                        }
                }
    }
    EXPECT_GT(compared, 2'000);
}

TEST(ChartScene, PaintsTheSameScaledToPaper) {
    QImage paper(960, 600, QImage::Format_RGB32);
    paper.setDotsPerMeterX(7559); // 192 dots an inch
    paper.setDotsPerMeterY(7559);
    const Chart chart = SampleChart(ChartType::ColumnStacked, 1);
    QPainter painter(&paper);
    PaintChart(painter, QRectF(0, 0, 960, 600), chart, PaperTheme(), SampleFont());
    painter.end();
    const Scene scene = SceneOf(chart);
    const QPointF centre = CentreOf(scene.marks().last());
    EXPECT_EQ(paper.pixelColor((centre * 2).toPoint()), QColor::fromRgb(breakAmber));
}

} // namespace
} // namespace kelvrane::chartspace
