// The daily chart: hours of work and break by project, from today's entries.
#pragma once

namespace kelvrane {

/// Rebuilds NumProjects and the chart's data in Control(). A day without entries, or one that can't
/// be read, shows "No Data".
void UpdateDailyChart();
/// Changes the chart to the type at ChartIndex, without refilling its data.
void ApplyChartType();

} // namespace kelvrane
