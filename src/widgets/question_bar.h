// The line of the control screen on which questions wait: the oldest with up to three answers, and
// what doesn't fit behind "More...". Without a question it isn't there.
#pragma once

#include "frame/waiting_questions.h"
#include "widgets/card.h"

class QHBoxLayout;
class QLabel;
class QMenu;

namespace kelvrane {

class QuestionBar : public Card {
    Q_OBJECT
  public:
    explicit QuestionBar(QWidget* parent = nullptr);

  private:
    void show(const QList<WaitingQuestion>& waiting);
    void refresh();
    QWidget* createAnswer(const WaitingQuestion& question, const QString& caption);
    QWidget* createMore(const QList<WaitingQuestion>& waiting);
    static void addAnswers(QMenu* menu, const WaitingQuestion& question,
                           const QStringList& answers);

    QLabel* m_text;
    QHBoxLayout* m_answers;
    QWidget* m_row; ///< holds the answers; made anew with each question
};

} // namespace kelvrane
