#include "help_tour.h"

#include "app/program.h"
#include "frame/help_topics.h"
#include "tour.h"
#include "widgets/help_window.h"
#include "widgets/tab_strip.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>

namespace kelvrane::tour {

void HelpTour::picture(const char* name) {
    m_album.picture(QString::fromLatin1(name), m_program.help().window());
}

void HelpTour::turnTo(const char* tab) {
    m_program.help().window()->findChild<TabStrip*>()->setCurrent(QString::fromLatin1(tab));
}

void HelpTour::type(const char* field, const char* text) {
    m_program.help()
        .window()
        ->findChild<QLineEdit*>(QString::fromLatin1(field))
        ->setText(QString::fromLatin1(text));
}

void HelpTour::run() {
    ShowHelpTopic(topics::Contents);
    if (!m_program.help().window())
        return;
    const auto* contents =
        m_program.help().window()->findChild<QAbstractItemView*>(QStringLiteral("HelpContents"));
    while (contents->model()->rowCount() == 0) // read in the background
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    picture("help-contents");
    ShowHelpTopic(topics::ControlScreen);
    picture("help-page");
    turnTo("INDEX");
    type("HelpIndexWord", "b");
    picture("help-index");
    turnTo("SEARCH");
    type("HelpSearchWords", "break");
    auto* hits =
        m_program.help().window()->findChild<QAbstractItemView*>(QStringLiteral("HelpHits"));
    hits->setCurrentIndex(hits->model()->index(1, 0));
    emit hits->activated(hits->currentIndex());
    picture("help-search");
    m_program.help().close();
}

} // namespace kelvrane::tour
