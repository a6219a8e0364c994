#include "app/help_key.h"

#include "frame/error_report.h"
#include "frame/help_topics.h"
#include "widgets/open_editor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace kelvrane {

namespace {

bool isHelpKey(const QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    return key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier && !key->isAutoRepeat();
}

const QWidget* belowPopups(const QWidget* window) {
    while (window->windowType() == Qt::Popup && window->parentWidget())
        window = window->parentWidget()->window();
    return window;
}

} // namespace

HelpKey::HelpKey(TopicOf topicOf) : m_topicOf(std::move(topicOf)) {
    QApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (!isHelpKey(event) || !watched->isWidgetType())
        return false;
    const auto* window = static_cast<const QWidget*>(watched);
    if (!window->isWindow())
        return false;
    Guarded(QStringLiteral("HelpKey"), [&] {
        const int topic = m_topicOf(belowPopups(window));
        while (QWidget* popup = QApplication::activePopupWidget())
            if (!popup->close())
                break;
        CommitOpenEditor();
        ShowHelpTopic(topic);
    });
    return true;
}

} // namespace kelvrane
