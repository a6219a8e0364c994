// The chart screen on a history of its own. Today is Monday, March 2, 2026.
#pragma once

#include "charts/chart_screen.h"
#include "charts/setup_model.h"
#include "frame/globals.h"
#include "platform/connection.h"
#include "support/working_day_fixture.h"

namespace kelvrane::testing {

class ChartTest : public WorkingDayTest {
  protected:
    ChartTest() {
        WireChart();
        Charts().reset();
        ChartSetup().reset();
        screens.onUnload = [](Screen screen) {
            if (screen == Screen::frmChart)
                UnloadChart();
        };
    }
    ~ChartTest() override {
        Charts().reset();
        ChartSetup().reset();
    }

    /// date: as it is stored; times as SQL.
    void addRow(const QString& date, const QString& name, const QString& number,
                const QString& total, const QString& pause) {
        Connection connection(path(QStringLiteral("DayInfo.mdb")));
        QSqlQuery& insert = connection.prepared(
            QStringLiteral("INSERT INTO DayInfo (Date, ProjectName, ProjectNumber, TotalTime, "
                           "BreakTime) VALUES (?, ?, ?, %1, %2)")
                .arg(total, pause));
        insert.bindValue(0, date);
        insert.bindValue(1, name);
        insert.bindValue(2, number);
        ASSERT_TRUE(insert.exec());
    }
    void addRow(const QString& date, const QString& name, int total, int pause) {
        addRow(date, name, QString(QStringLiteral("N-") + name), QString::number(total),
               QString::number(pause));
    }
    /// Three days of two projects.
    void addDays() {
        addRow(QStringLiteral("2026-02-27"), QStringLiteral("Beta"), 30, 0);
        addRow(QStringLiteral("2026-03-01"), QStringLiteral("Beta"), 120, 15);
        addRow(QStringLiteral("2026-03-01"), QStringLiteral("Alpha"), 90, 30);
        addRow(QStringLiteral("2026-03-02"), QStringLiteral("Alpha"), 60, 0);
    }
    static void press(const char* key) { Charts().smuiToolBar.click(QString::fromLatin1(key)); }
    static QString field(const char* key) {
        return Charts().smuiToolBar.value(QString::fromLatin1(key));
    }
    static bool isVisible(const char* key) {
        return Charts().smuiToolBar.item(QString::fromLatin1(key)).visible;
    }
    /// Of the message box shown last; no title, no text for none.
    Box lastBox() const {
        return dialogs.shown.isEmpty() ? Box{.text = {}, .title = {}} : dialogs.shown.last();
    }
    /// "Alpha 1.5/0.5" for each category: hours of work and break.
    static QStringList charted() {
        QStringList lines;
        const chartspace::Chart& chart = Charts().chart();
        for (qsizetype i = 0; i < chart.categories.size(); ++i)
            lines.append(QStringLiteral("%1 %2/%3")
                             .arg(chart.categories[i])
                             .arg(chart.series[0].values[i])
                             .arg(chart.series[1].values[i]));
        return lines;
    }
};

/// The texts of a branch, opened all the way, two blanks a level.
inline QStringList Opened(QAbstractItemModel& tree, const QModelIndex& parent = {},
                          const QString& indent = {}) {
    QStringList lines;
    if (tree.canFetchMore(parent))
        tree.fetchMore(parent);
    for (int row = 0; row < tree.rowCount(parent); ++row) {
        const QModelIndex index = tree.index(row, 0, parent);
        lines.append(indent + index.data().toString());
        lines += Opened(tree, index, indent + QStringLiteral("  "));
    }
    return lines;
}

} // namespace kelvrane::testing
