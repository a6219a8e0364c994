#include "widgets/frmProgress.h"

#include "widgets/captions.h"
#include "widgets/theme.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace kelvrane {

frmProgress::frmProgress(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_caption(new QLabel(this)), m_bar(new QProgressBar(this)) {
    setObjectName(QStringLiteral("frmProgress"));
    setWindowTitle(QStringLiteral("Kelvrane"));
    setWindowIcon(theme::AppIcon());
    m_caption->setTextFormat(Qt::PlainText);
    m_bar->setObjectName(QStringLiteral("ProgressBar1"));
    m_bar->setRange(0, 100);
    m_bar->setTextVisible(false);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::Gap, theme::Margin, theme::Gap, theme::Gap);
    layout->setSpacing(theme::Step);
    layout->addWidget(m_caption);
    layout->addWidget(m_bar);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_bar->setMinimumWidth(340);
}

void frmProgress::setCaption(const QString& caption) {
    m_caption->setText(m_caption->fontMetrics().elidedText(OneLine(ShownCaption(caption)),
                                                           Qt::ElideMiddle, m_bar->minimumWidth()));
    m_bar->setAccessibleName(caption);
}

void frmProgress::setPercent(int percent) {
    m_bar->setValue(qBound(0, percent, 100));
}

} // namespace kelvrane
