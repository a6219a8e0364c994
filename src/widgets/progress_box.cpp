#include "widgets/progress_box.h"

#include "widgets/frmProgress.h"

#include <QCoreApplication>

namespace kelvrane {

void ProgressBox::DeleteLater::operator()(frmProgress* screen) const {
    // It may be closed while its own events are under way.
    screen->hide();
    screen->deleteLater();
}

ProgressBox::ProgressBox() = default;
ProgressBox::~ProgressBox() = default;

void ProgressBox::show(const QString& caption) {
    if (!m_screen)
        m_screen.reset(new frmProgress);
    m_screen->setCaption(caption);
    m_screen->setPercent(0);
    m_screen->show();
}

void ProgressBox::setPercent(int percent) {
    if (m_screen)
        m_screen->setPercent(percent);
    QCoreApplication::processEvents();
}

void ProgressBox::close() {
    m_screen.reset();
}

} // namespace kelvrane
