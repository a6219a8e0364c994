#include "frame/waiting_questions.h"

#include "frame/day_tail.h"
#include "platform/escaped_fields.h"
#include "platform/ports.h"

#include <algorithm>
#include <utility>

namespace kelvrane {

void WaitingQuestions::registerKind(const QString& kind, QuestionKind what) {
    m_kinds.insert(kind, std::move(what));
}

void WaitingQuestions::ask(const QString& kind, const QStringList& details) {
    const Waiting question{kind, details};
    if (m_waiting.contains(question))
        return;
    m_waiting.append(question);
    writeTail();
    if (const auto known = m_kinds.constFind(kind); known != m_kinds.constEnd() && ports.tray)
        ports.tray->notify(QStringLiteral("Kelvrane"), known->text(details));
    emit Changed();
}

void WaitingQuestions::withdraw(const QString& kind) {
    if (m_waiting.removeIf([&](const Waiting& question) { return question.kind == kind; }) == 0)
        return;
    writeTail();
    emit Changed();
}

void WaitingQuestions::answer(const WaitingQuestion& question, const QString& answer) {
    const auto kind = m_kinds.constFind(question.kind);
    if (kind == m_kinds.constEnd() || !m_waiting.contains({question.kind, question.details}) ||
        !kind->answers(question.details).contains(answer))
        return;
    if (kind->take(question.details, answer)) {
        m_waiting.removeOne({question.kind, question.details});
        writeTail();
        emit Answered();
    }
    emit Changed();
}

QList<WaitingQuestion> WaitingQuestions::waiting() const {
    QList<WaitingQuestion> shown;
    for (const Waiting& question : m_waiting)
        if (const auto kind = m_kinds.constFind(question.kind); kind != m_kinds.constEnd())
            shown.append({question.kind, question.details, kind->text(question.details),
                          kind->answers(question.details)});
    return shown;
}

bool WaitingQuestions::isWaiting(const QString& kind) const {
    return std::ranges::find(m_waiting, kind, &Waiting::kind) != m_waiting.end();
}

void WaitingQuestions::readTail() {
    for (const QString& value : TailValues(tail::Question)) {
        QStringList fields = SplitFields(value);
        const Waiting question{fields.takeFirst(), fields};
        if (!m_waiting.contains(question))
            m_waiting.append(question);
    }
    writeTail();
    emit Changed();
}

void WaitingQuestions::clear() {
    m_waiting.clear();
    emit Changed();
}

void WaitingQuestions::writeTail() {
    QStringList lines;
    for (const Waiting& question : std::as_const(m_waiting))
        if (const auto kind = m_kinds.constFind(question.kind);
            kind == m_kinds.constEnd() || kind->stored)
            lines.append(JoinFields(QStringList{question.kind} + question.details));
    SetTailValues(tail::Question, lines);
}

WaitingQuestions& Questions() {
    static WaitingQuestions questions;
    return questions;
}

} // namespace kelvrane
