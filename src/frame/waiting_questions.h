// Questions that can't be asked in a box, since nobody may be there: what a tick or a wake finds, a
// history that can't be written. They wait on the control screen, oldest first, until somebody
// answers; a notice of the tray leads there. Stored kinds stay over restarts and dates, in the
// day's tail.
//
// The module that asks a kind of question registers it: what it says, which answers it has, and
// what each does.
//
//     Questions().registerKind("asleep", {.text = ..., .answers = ..., .take = ...});
//     Questions().ask("asleep", {"3/2/2026", "Alpha"});
#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace kelvrane {

struct QuestionKind {
    /// One or two sentences, of the question's details.
    std::function<QString(const QStringList& details)> text;
    /// Captions of the answers that can be given now; the first is the likeliest.
    std::function<QStringList(const QStringList& details)> answers;
    /// Does what the answer says. False: it couldn't be done, and the question goes on waiting.
    std::function<bool(const QStringList& details, const QString& answer)> take;
    bool stored = true; ///< false: asked anew when it is due again
};

struct WaitingQuestion {
    QString kind;
    QStringList details;
    QString text = {};
    QStringList answers = {};
};

class WaitingQuestions : public QObject {
    Q_OBJECT
  public:
    void registerKind(const QString& kind, QuestionKind what);

    /// Lets it wait, and says so in the tray. Nothing when the same is waiting already.
    void ask(const QString& kind, const QStringList& details = {});
    /// Every question of the kind has settled itself.
    void withdraw(const QString& kind);
    /// Gives the question the answer with this caption. Nothing for a question that no longer
    /// waits, or an answer that it doesn't have. Raises what the kind's procedure raises; the
    /// question then stays.
    void answer(const WaitingQuestion& question, const QString& answer);

    /// Oldest first. Texts and answers are made anew at each call.
    QList<WaitingQuestion> waiting() const;
    bool isWaiting(const QString& kind) const;

    /// Takes over what the day's tail holds, behind what waits already.
    void readTail();

    /// The answers depend on the day: to be called when it changed.
    void refresh() { emit Changed(); }
    /// As after construction, but for the kinds.
    void clear();

  signals:
    void Changed();
    void Answered(); ///< one went, and the day's tail with it: it wants to be saved

  private:
    struct Waiting {
        QString kind;
        QStringList details;
        bool operator==(const Waiting&) const = default;
    };
    void writeTail();

    QMap<QString, QuestionKind> m_kinds;
    QList<Waiting> m_waiting; ///< kinds that nobody registered among them: kept, not shown
};

/// The one model.
WaitingQuestions& Questions();

} // namespace kelvrane
