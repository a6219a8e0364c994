#include "widgets/question_bar.h"

#include "frame/error_report.h"
#include "widgets/captions.h"
#include "widgets/theme.h"

#include <QBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include <utility>

namespace kelvrane {

namespace {

constexpr int answersShown = 3;

/// To the question that was read, by the caption that was clicked, whatever changed meanwhile.
void give(const WaitingQuestion& question, const QString& answer) {
    Guarded(QStringLiteral("WaitingQuestion"), [&] { Questions().answer(question, answer); });
}

} // namespace

QuestionBar::QuestionBar(QWidget* parent)
    : Card(parent), m_text(new QLabel(this)), m_answers(new QHBoxLayout), m_row(new QWidget(this)) {
    setObjectName(QStringLiteral("questionBar"));
    m_text->setObjectName(QStringLiteral("questionText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Step, theme::Margin, theme::Step);
    content->setSpacing(theme::Step);
    content->addWidget(m_text);
    content->addLayout(m_answers);
    m_answers->setSpacing(theme::Step);
    m_answers->addWidget(m_row);
    m_answers->addStretch(1);
    // Queued: an answer is given by a button that is replaced here.
    connect(&Questions(), &WaitingQuestions::Changed, this, &QuestionBar::refresh,
            Qt::QueuedConnection);
    refresh();
}

void QuestionBar::refresh() {
    const QList<WaitingQuestion> waiting = Questions().waiting();
    setVisible(!waiting.isEmpty());
    if (!waiting.isEmpty())
        show(waiting);
}

void QuestionBar::show(const QList<WaitingQuestion>& waiting) {
    const WaitingQuestion& oldest = waiting.first();
    m_text->setText(oldest.text);
    setAccessibleName(oldest.text);
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(theme::Step);
    for (const QString& answer : oldest.answers.first(qMin(oldest.answers.size(), answersShown)))
        buttons->addWidget(createAnswer(oldest, answer));
    if (waiting.size() > 1 || oldest.answers.size() > answersShown)
        buttons->addWidget(createMore(waiting));
    delete m_answers->replaceWidget(m_row, row);
    std::exchange(m_row, row)->deleteLater();
}

QWidget* QuestionBar::createAnswer(const WaitingQuestion& question, const QString& caption) {
    auto* button = new QPushButton(ControlCaption(caption));
    button->setObjectName(caption);
    button->setAccessibleName(caption);
    button->setMinimumWidth(button->sizeHint().width() + 2 * theme::Step); // air beside long words
    connect(button, &QPushButton::clicked, this, [question, caption] { give(question, caption); });
    return button;
}

QWidget* QuestionBar::createMore(const QList<WaitingQuestion>& waiting) {
    auto* button = new QPushButton(QStringLiteral("More..."));
    button->setObjectName(QStringLiteral("moreQuestions"));
    auto* menu = new QMenu(button);
    addAnswers(menu, waiting.first(), waiting.first().answers.mid(answersShown));
    for (const WaitingQuestion& question : waiting.mid(1))
        addAnswers(menu->addMenu(ControlCaption(question.text)), question, question.answers);
    button->setMenu(menu);
    return button;
}

void QuestionBar::addAnswers(QMenu* menu, const WaitingQuestion& question,
                             const QStringList& answers) {
    for (const QString& answer : answers)
        menu->addAction(ControlCaption(answer), [question, answer] { give(question, answer); });
}

} // namespace kelvrane
