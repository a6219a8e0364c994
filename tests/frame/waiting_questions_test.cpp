#include "frame/day_tail.h"
#include "frame/waiting_questions.h"
#include "support/fakes.h"

namespace kelvrane {
namespace {

class Waiting : public testing::ProgramTest {
  protected:
    Waiting() {
        Questions().registerKind(
            "color",
            {.text =
                 [](const QStringList& details) { return QString("Which, " + details[0] + "?"); },
             .answers =
                 [](const QStringList&) {
                     return QStringList{"Red", "Never"};
                 },
             .take =
                 [this](const QStringList& details, const QString& answer) {
                     taken.append(QString(details[0] + '=' + answer));
                     return answer != u"Never";
                 }});
    }
    QStringList taken;
};

TEST_F(Waiting, TheOldestComesFirstAndAnAnswerTakesItAway) {
    int saves = 0;
    QObject context;
    QObject::connect(&Questions(), &WaitingQuestions::Answered, &context, [&] { ++saves; });
    Questions().ask("color", {"a;b"});
    Questions().ask("color", {"second"});
    Questions().ask("color", {"a;b"}); // waits already
    ASSERT_EQ(Questions().waiting().size(), 2);
    EXPECT_EQ(Questions().waiting()[0].text, "Which, a;b?");
    EXPECT_EQ(tray.notices.size(), 2);
    const WaitingQuestion oldest = Questions().waiting().first();
    Questions().answer(oldest, "Green"); // isn't one of its answers
    Questions().answer(oldest, "Never"); // couldn't be done: it goes on waiting
    Questions().answer({.kind = "color", .details = {"another"}}, "Red");
    EXPECT_EQ(Questions().waiting().size(), 2);
    EXPECT_EQ(saves, 0);
    Questions().answer(oldest, "Red");
    Questions().answer(oldest, "Red"); // a second click doesn't go to the next one
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(taken, (QStringList{"a;b=Never", "a;b=Red"}));
    EXPECT_EQ(TailValues(tail::Question), QStringList{"color;second"});
}

TEST_F(Waiting, TheTailKeepsThemAndKindsThatNobodyKnows) {
    SetDayTail({"later=1", "question=unknown;x", "question=color;a\\;b"});
    Questions().readTail();
    ASSERT_EQ(Questions().waiting().size(), 1);
    EXPECT_EQ(Questions().waiting()[0].text, "Which, a;b?");
    Questions().withdraw("color");
    EXPECT_EQ(DayTail(), (QStringList{"later=1", "question=unknown;x"}));
}

} // namespace
} // namespace kelvrane
