#include "widgets/message_boxes.h"
#include "widgets/real_ports.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace kelvrane {
namespace {

QMessageBox* OpenBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

/// Runs a step once the event loop of a box turns.
void Later(std::function<void()> step) {
    QTimer::singleShot(0, qApp, std::move(step));
}

struct Answer {
    const char* name;
    BoxButtons buttons;
    std::function<void(QMessageBox*)> act;
    BoxAnswer answer;
};

std::function<void(QMessageBox*)> Press(QMessageBox::StandardButton button) {
    return [button](QMessageBox* box) { QTest::mouseClick(box->button(button), Qt::LeftButton); };
}
void Escape(QMessageBox* box) {
    QTest::keyClick(box, Qt::Key_Escape);
}
void Frame(QMessageBox* box) {
    box->close();
}

TEST(MessageBoxesTest, AnswersIncludeFrameAndEscape) {
    const Answer answers[] = {
        {"yes", BoxButtons::YesNo, Press(QMessageBox::Yes), BoxAnswer::Yes},
        {"no", BoxButtons::YesNo, Press(QMessageBox::No), BoxAnswer::No},
        {"escape is no", BoxButtons::YesNo, Escape, BoxAnswer::No},
        {"frame is no", BoxButtons::YesNo, Frame, BoxAnswer::No},
        {"no of three", BoxButtons::YesNoCancel, Press(QMessageBox::No), BoxAnswer::No},
        {"escape of three", BoxButtons::YesNoCancel, Escape, BoxAnswer::Cancel},
        {"ok", BoxButtons::OkCancel, Press(QMessageBox::Ok), BoxAnswer::Ok},
        {"escape is cancel", BoxButtons::OkCancel, Escape, BoxAnswer::Cancel},
        {"frame is cancel", BoxButtons::OkCancel, Frame, BoxAnswer::Cancel},
        {"escape is ok", BoxButtons::Ok, Escape, BoxAnswer::Ok},
        {"frame is ok", BoxButtons::Ok, Frame, BoxAnswer::Ok},
    };
    MessageBoxes boxes;
    for (const Answer& answer : answers) {
        Later([&] { answer.act(OpenBox()); });
        EXPECT_EQ(boxes.ask({.text = "Really?", .buttons = answer.buttons}), answer.answer)
            << answer.name;
        EXPECT_FALSE(boxes.isOpen());
    }
}

TEST(MessageBoxesTest, OwnWordsAreShownInTheirOrderTheSafeOneFirst) {
    MessageBoxes boxes;
    const auto press = [](int index) {
        return [index](QMessageBox* box) {
            auto buttons = box->findChildren<QPushButton*>();
            std::ranges::sort(buttons, {}, [](QPushButton* button) { return button->x(); });
            ASSERT_EQ(buttons.size(), 2);
            EXPECT_EQ(buttons[0]->text(), "Don't start");
            EXPECT_EQ(box->defaultButton(), buttons[0]);
            QTest::mouseClick(buttons[index], Qt::LeftButton);
        };
    };
    const Answer answers[] = {
        {"first", BoxButtons::OkCancel, press(0), BoxAnswer::Cancel},
        {"second", BoxButtons::OkCancel, press(1), BoxAnswer::Ok},
        {"escape", BoxButtons::OkCancel, Escape, BoxAnswer::Cancel},
        {"frame", BoxButtons::YesNo, Frame, BoxAnswer::No},
        {"second of yes and no", BoxButtons::YesNo, press(1), BoxAnswer::Yes},
    };
    for (const Answer& answer : answers) {
        Later([&] { answer.act(OpenBox()); });
        EXPECT_EQ(boxes.ask({.text = "Really?",
                             .buttons = answer.buttons,
                             .captions = {"Don't start", "Start all the same"}}),
                  answer.answer)
            << answer.name;
    }
}

TEST(MessageBoxesTest, ShowsThePlainTextWithTheSafeDefault) {
    MessageBoxes boxes;
    Later([] {
        QMessageBox* box = OpenBox();
        EXPECT_EQ(box->text(), "<b>Fern & Sons</b>\nsecond");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_FALSE(box->iconPixmap().isNull());
        EXPECT_EQ(box->standardButton(box->defaultButton()), QMessageBox::No);
        box->close();
    });
    boxes.ask({.text = "<b>Fern & Sons</b>\r\nsecond",
               .icon = BoxIcon::Exclamation,
               .buttons = BoxButtons::YesNo});
}

TEST(MessageBoxesTest, CloseAllEndsNestedBoxesAsCancelled) {
    MessageBoxes boxes;
    std::optional<BoxAnswer> inner;
    Later([&] {
        Later([&] { boxes.closeAll(); });
        inner = boxes.ask({.text = "inner", .buttons = BoxButtons::OkCancel});
    });
    EXPECT_EQ(boxes.ask({.text = "outer", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_EQ(inner, BoxAnswer::Cancel);

    Later([&] { boxes.closeAll(); });
    FileQuestion question;
    question.filter = "Database Files ( *.mdb ) |*.mdb";
    EXPECT_EQ(boxes.openFile(question), std::nullopt);

    boxes.shutDown(); // nobody is there any more: what comes later doesn't wait
    EXPECT_EQ(boxes.ask({.text = "late", .buttons = BoxButtons::YesNoCancel}), BoxAnswer::Cancel);
    EXPECT_EQ(boxes.saveFile(question), std::nullopt);
}

TEST(MessageBoxesTest, ABoxWhoseWindowGoesIsCancelled) {
    MessageBoxes boxes;
    Later([] { delete OpenBox(); });
    EXPECT_EQ(boxes.ask({.text = "?", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
}

TEST(MessageBoxesTest, TextsForDisplay) {
    EXPECT_EQ(FileDialogFilter("Database Files ( *.mdb ) |*.mdb"), "Database Files (*.mdb)");
    EXPECT_EQ(FileDialogFilter("A (*.a;*.b)|*.a;*.b|All|*"), "A (*.a *.b);;All (*)");
    EXPECT_EQ(ShownMessage("a\r\nb\rc\nd\n\re"), "a\nb\nc\nd\ne");
    EXPECT_EQ(ShownMessage("two  blanks stay "), "two  blanks stay ");
    EXPECT_LT(ShownMessage(QString(10000, QLatin1Char('x'))).size(), 300);
    EXPECT_LT(ShownMessage(QString("word ").repeated(10000)).size(), 3100);
}

TEST(QtEventsTest, WaitsEndWithTheConditionOrTheProgram) {
    QtEvents events;
    bool done = false;
    Later([&] { done = true; });
    EXPECT_TRUE(events.waitUntil([&] { return done; }));

    bool innerResult = true;
    Later([&] {
        Later([&] { events.shutDown(); });
        innerResult = events.waitUntil([] { return false; });
    });
    EXPECT_FALSE(events.waitUntil([] { return false; }));
    EXPECT_FALSE(innerResult);
    EXPECT_FALSE(events.waitUntil([] { return true; })) << "nothing waits after the end";
}

} // namespace
} // namespace kelvrane
