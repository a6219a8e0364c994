#include "charts/frmGraphControl.h"

#include "charts/chart_model.h"
#include "charts/chart_setup.h"
#include "charts/setup_model.h"
#include "charts/view_sliders.h"
#include "frame/error_report.h"
#include "widgets/captions.h"
#include "widgets/chart_type_list.h"
#include "widgets/keyed_buttons.h"
#include "widgets/keyed_push_button.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/quiet_label.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int familiesWidth = 124;
constexpr int figuresWidth = 40;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

QWidget* chartWindow() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(windows, [](const QWidget* window) {
        return window->objectName() == u"frmChart" && window->isVisible();
    });
    return found == windows.end() ? nullptr : *found;
}

} // namespace

frmGraphControl::frmGraphControl(QWidget* parent)
    : QWidget(parent ? parent : chartWindow(), Qt::Tool) {
    setObjectName(T("frmGraphControl"));
    setWindowTitle(T("Chart Setup"));
    WireGraphControl();
    Guarded(T("frmGraphControl_Load"), LoadGraphControl);
    smuiToolBar = new KeyedToolBar(&ChartSetup().smuiToolBar, this);
    smuiToolBar->setObjectName(T("smuiToolBar"));
    SSTab1 = new TabStrip(&ChartSetup().SSTab1, this);
    SSTab1->setObjectName(T("SSTab1"));
    SSTab1->bindPage(setup_tabs::Type, createTypePage());
    SSTab1->bindPage(setup_tabs::View3D, createViewPage());
    SSTab1->bindPage(setup_tabs::BorderFill, createBorderPage());
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step, theme::Step / 2, theme::Step, theme::Step);
    content->setSpacing(theme::Step / 2);
    content->addWidget(smuiToolBar);
    content->addWidget(SSTab1, 1);
    bind();
    showControls();
    showSliders();
    adjustSize();
    standBesideParent();
    smuiAvailCharts->setFocus();
}

QWidget* frmGraphControl::createTypePage() {
    auto* page = new QWidget;
    auto* families = new KeyedButtons(&ChartSetup().smuiChartType, QString(), page);
    families->setObjectName(T("smuiChartType"));
    families->setAccessibleName(T("Chart families"));
    families->setFixedWidth(familiesWidth);
    smuiAvailCharts = new ChartTypeList(&ChartSetup().smuiAvailCharts, page);
    smuiAvailCharts->setObjectName(T("smuiAvailCharts"));
    smuiAvailCharts->setAccessibleName(T("Available charts"));
    auto* content = new QGridLayout(page);
    content->setContentsMargins(theme::Step, 0, theme::Margin, theme::Step);
    content->setSpacing(theme::Step);
    content->addWidget(families, 0, 0);
    content->addWidget(smuiAvailCharts, 0, 1);
    content->addWidget(createLegendAndTitle(), 1, 0, 1, 2);
    content->setRowStretch(0, 1);
    return page;
}

QWidget* frmGraphControl::createLegendAndTitle() {
    auto* row = new QWidget;
    txtTitle = new QLineEdit(row);
    txtTitle->setObjectName(T("txtTitle"));
    txtTitle->setAccessibleName(T("Title"));
    txtTitle->setPlaceholderText(T("Title"));
    connect(txtTitle, &QLineEdit::textEdited, this,
            [](const QString& text) { ChartSetup().controls.edit(T("txtTitle"), text); });
    auto* content = new QHBoxLayout(row);
    content->setContentsMargins(theme::Step, 0, 0, 0);
    content->setSpacing(theme::Step);
    content->addWidget(CreatePushButton(&ChartSetup().controls, T("cmdAddLegend"), row));
    content->addWidget(CreatePushButton(&ChartSetup().controls, T("cmdAddTitle"), row));
    content->addWidget(txtTitle, 1);
    return row;
}

QWidget* frmGraphControl::createViewPage() {
    auto* page = new QWidget;
    auto* content = new QGridLayout(page);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Step);
    content->setHorizontalSpacing(theme::Margin);
    content->setVerticalSpacing(theme::Margin);
    int line = 0;
    for (const ViewSlider& row : viewSliders) {
        QSlider* slider = createSlider(row);
        auto* caption = new QLabel(slider->accessibleName(), page);
        caption->setBuddy(slider);
        auto* figure = new QLabel(page);
        figure->setObjectName(slider->objectName() + T("Value"));
        figure->setFont(theme::TabularFont(figure->font()));
        figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        figure->setMinimumWidth(figuresWidth);
        connect(slider, &QSlider::valueChanged, figure, qOverload<int>(&QLabel::setNum));
        content->addWidget(caption, line, 0);
        content->addWidget(slider, line, 1);
        content->addWidget(figure, line++, 2);
    }
    content->addWidget(CreatePushButton(&ChartSetup().controls, T("cmdRestoreDefaults"), page),
                       line, 0, 1, 3, Qt::AlignRight);
    content->setRowStretch(line + 1, 1);
    return page;
}

QSlider* frmGraphControl::createSlider(const ViewSlider& row) {
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(T(row.name));
    slider->setAccessibleName(T(row.caption));
    slider->setRange(row.lowest, row.highest);
    slider->setSingleStep(sliderSmallStep);
    slider->setPageStep(sliderLargeStep);
    slider->setTickInterval(sliderTickInterval);
    slider->setTickPosition(QSlider::TicksBelow);
    connect(slider, &QSlider::valueChanged, this, [name = slider->objectName()](int value) {
        Guarded(name + T("_Change"), [&] { SliderChange(name, value); });
    });
    return slider;
}

QWidget* frmGraphControl::createBorderPage() {
    auto* page = new QWidget;
    auto* text = new QuietLabel(
        T("Borders and fills follow the colours of your desktop: there is nothing to set here."),
        page);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignCenter);
    auto* content = new QVBoxLayout(page);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Gap);
    content->addWidget(text);
    return page;
}

void frmGraphControl::bind() {
    SetupModel& setup = ChartSetup();
    connect(&setup.controls, &QAbstractItemModel::dataChanged, this,
            &frmGraphControl::showControls);
    connect(&setup, &SetupModel::SlidersMoved, this, &frmGraphControl::showSliders);
    connect(&setup, &SetupModel::TypePageWanted, this,
            [this] { SSTab1->setCurrent(setup_tabs::Type); });
    connect(&setup, &SetupModel::TitleFocusWanted, txtTitle, qOverload<>(&QWidget::setFocus));
    connect(SSTab1, &TabStrip::changed, &setup,
            [](const QString& key) { Guarded(T("SSTab1_Click"), [&] { SSTab1_Click(key); }); });
}

void frmGraphControl::showControls() {
    const KeyedItems& controls = ChartSetup().controls;
    for (auto* button : findChildren<QPushButton*>())
        if (controls.contains(button->objectName())) {
            const QString caption = controls.item(button->objectName()).caption;
            button->setText(ControlCaption(caption));
            button->setAccessibleName(ShownCaption(caption));
        }
    const KeyedItem& title = controls.item(txtTitle->objectName());
    txtTitle->setEnabled(title.enabled);
    if (txtTitle->text() != title.value) // else the cursor would jump while typing
        txtTitle->setText(title.value);
}

void frmGraphControl::showSliders() {
    for (const ViewSlider& row : viewSliders) {
        const int value = int(Charts().settings.view.*row.value);
        findChild<QSlider*>(T(row.name))->setValue(value);
        findChild<QLabel*>(T(row.name) + T("Value"))->setNum(value);
    }
}

/// Where the desktop lets windows choose their place, the chart stays in sight.
void frmGraphControl::standBesideParent() {
    if (!parentWidget() || !screen())
        return;
    const QRect chart = parentWidget()->frameGeometry();
    const QRect room = screen()->availableGeometry();
    const int roomLeft = chart.left() - room.left();
    const int roomRight = room.right() - chart.right();
    const bool onTheRight = roomRight >= width() || roomRight >= roomLeft;
    const int wanted = onTheRight ? chart.right() + 1 : chart.left() - width() - 1;
    move(std::clamp(wanted, room.left(), std::max(room.left(), room.right() - width())),
         std::max(chart.top(), room.top()));
}

void frmGraphControl::closeEvent(QCloseEvent* event) {
    event->ignore();
    ChartSetup().smuiToolBar.click(T("CLOSE"));
}

void frmGraphControl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace kelvrane
