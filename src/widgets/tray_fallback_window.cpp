#include "widgets/tray_fallback_window.h"

#include "widgets/captions.h"
#include "widgets/flat_button.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int MarkSide = 40;
constexpr int TextWidth = 300;

struct StateWord {
    DayState state;
    const char* word;
};
constexpr StateWord StateWords[] = {
    {DayState::Stopped, "Stopped"},
    {DayState::Running, "Running"},
    {DayState::OnBreak, "On Break"},
};

QLabel* PlainLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

TrayFallbackWindow::TrayFallbackWindow(QMenu* contextMenu, QMenu* recentMenu)
    : m_mark(new QLabel(this)), m_word(PlainLabel(this)), m_text(PlainLabel(this)),
      m_notice(PlainLabel(this)) {
    setObjectName(QStringLiteral("TrayFallbackWindow"));
    setWindowTitle(QStringLiteral("Kelvrane"));
    setWindowIcon(theme::AppIcon());
    setAttribute(Qt::WA_ShowWithoutActivating); // it comes by itself, whoever is typing where
    setToolTip(
        QStringLiteral("Double-click: the control screen. The close box shows it too, and this "
                       "window stays while Kelvrane runs. To end Kelvrane: Menu, Exit "
                       "Program."));
    QFont word = font();
    word.setWeight(QFont::DemiBold);
    m_word->setFont(word);
    m_text->setMinimumWidth(TextWidth);
    m_notice->setObjectName(QStringLiteral("notice"));
    m_notice->setWordWrap(true);
    m_notice->setCursor(Qt::PointingHandCursor);
    m_notice->setToolTip(QStringLiteral("Show the control screen"));
    m_notice->hide();

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch(1);
    texts->addWidget(m_word);
    texts->addWidget(m_text);
    texts->addStretch(1);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    layout->setHorizontalSpacing(theme::Margin);
    layout->addWidget(m_mark, 0, 0);
    layout->addLayout(texts, 0, 1);
    layout->setColumnStretch(1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    const auto addButton = [&](const char* name, const char* icon, const char* caption,
                               const char* hint, QMenu* menu, int code) {
        auto* button = new FlatButton(this);
        button->setObjectName(QLatin1String(name));
        button->setIcon(theme::Icon(QLatin1String(icon)));
        button->setCaption(QLatin1String(caption));
        button->setHint(QLatin1String(hint));
        connect(button, &QToolButton::clicked, this, [this, button, menu, code] {
            emit clicked(code);
            menu->popup(button->mapToGlobal(QPoint(0, button->height())));
        });
        buttons->addWidget(button);
    };
    addButton("projects", "project", "Projects", "Recent projects", recentMenu, 2);
    addButton("menu", "menu", "Menu", "All commands", contextMenu, 1);
    layout->addLayout(buttons, 0, 2);
    layout->addWidget(m_notice, 1, 0, 1, 3);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    showState();
}

void TrayFallbackWindow::setState(DayState state, const QString& text) {
    m_state = state;
    const QString line = OneLine(text);
    m_text->setText(m_text->fontMetrics().elidedText(line, Qt::ElideMiddle, TextWidth));
    m_text->setToolTip(PlainToolTip(text));
    showState();
}

void TrayFallbackWindow::notify(const QString& title, const QString& text) {
    m_notice->setText(title.isEmpty() ? text : title + QLatin1Char('\n') + text);
    m_notice->show();
    QApplication::alert(this);
}

void TrayFallbackWindow::showState() {
    const auto& row = *std::ranges::find(StateWords, m_state, &StateWord::state);
    m_word->setText(QLatin1String(row.word));
    m_mark->setPixmap(
        theme::TrayStateIcon(m_state).pixmap(QSize(MarkSide, MarkSide), devicePixelRatioF()));
    m_mark->setAccessibleName(m_word->text());
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, theme::SecondaryText(quiet));
    m_text->setPalette(quiet);
}

void TrayFallbackWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit activated();
}

void TrayFallbackWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_notice->isVisible() ||
        !m_notice->geometry().contains(event->position().toPoint()))
        return;
    m_notice->hide(); // it has been read
    emit activated();
}

void TrayFallbackWindow::mouseDoubleClickEvent(QMouseEvent*) {
    emit activated();
}

void TrayFallbackWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showState();
}

} // namespace kelvrane
