#include "widgets/message_boxes.h"

#include "widgets/theme.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int IconSide = 40;

struct IconRow {
    BoxIcon icon;
    const char* name;
    QRgb color;
};
constexpr IconRow IconRows[] = {
    {BoxIcon::None, "", 0},
    {BoxIcon::Information, "about", 0xff3b78d8},
    {BoxIcon::Exclamation, "warning", 0xffe0962e},
    {BoxIcon::Stop, "cancel", 0xffc8372d},
    {BoxIcon::Question, "help", 0xff3b78d8},
};

struct ButtonsRow {
    BoxButtons buttons;
    QMessageBox::StandardButtons shown;
    QMessageBox::StandardButton safe;
    BoxAnswer safeAnswer;
};
const ButtonsRow ButtonsRows[] = {
    {BoxButtons::Ok, QMessageBox::Ok, QMessageBox::Ok, BoxAnswer::Ok},
    {BoxButtons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
     BoxAnswer::Cancel},
    {BoxButtons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::No, BoxAnswer::No},
    {BoxButtons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
     QMessageBox::Cancel, BoxAnswer::Cancel},
};

struct AnswerRow {
    QMessageBox::StandardButton button;
    BoxAnswer answer;
};
constexpr AnswerRow AnswerRows[] = {
    {QMessageBox::Ok, BoxAnswer::Ok},
    {QMessageBox::Cancel, BoxAnswer::Cancel},
    {QMessageBox::Yes, BoxAnswer::Yes},
    {QMessageBox::No, BoxAnswer::No},
};

} // namespace

QString FileDialogFilter(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList converted;
    for (qsizetype part = 0; part + 1 < parts.size(); part += 2) {
        QString name = parts[part];
        if (const qsizetype bracket = name.indexOf(QLatin1Char('(')); bracket >= 0)
            name.truncate(bracket);
        QString patterns = parts[part + 1].trimmed();
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        converted.append(name.trimmed() + QStringLiteral(" (") + patterns + QLatin1Char(')'));
    }
    return converted.join(QStringLiteral(";;"));
}

QString ShownMessage(const QString& text) {
    constexpr qsizetype LongestText = 3000;
    constexpr qsizetype LongestWord = 240;
    constexpr qsizetype BreakEvery = 48;
    QString shown = text;
    for (const char* both : {"\r\n", "\n\r"}) // some texts have them the other way round
        shown.replace(QLatin1String(both), QLatin1String("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    shown.remove(QChar(QChar::Null));

    // A box can't scroll, and it breaks lines between words only.
    static const QRegularExpression endless(QStringLiteral("\\S{%1,}").arg(BreakEvery + 1));
    QString broken;
    qsizetype done = 0;
    for (auto words = endless.globalMatch(shown); words.hasNext();) {
        const QRegularExpressionMatch match = words.next();
        QString word = match.captured();
        if (word.size() > LongestWord)
            word = word.left(LongestWord / 2) + QChar(0x2026) + word.right(LongestWord / 2);
        for (qsizetype place = BreakEvery; place < word.size(); place += BreakEvery + 1)
            word.insert(place, QChar(0x200b));
        broken += shown.mid(done, match.capturedStart() - done) + word;
        done = match.capturedEnd();
    }
    broken += shown.mid(done);
    if (broken.size() > LongestText)
        broken = broken.left(LongestText / 2) + QChar(0x2026) + broken.right(LongestText / 2);
    return broken;
}

BoxAnswer MessageBoxes::ask(const Box& box) {
    const auto& icon = *std::ranges::find(IconRows, box.icon, &IconRow::icon);
    const auto& buttons = *std::ranges::find(ButtonsRows, box.buttons, &ButtonsRow::buttons);

    const QPointer<QMessageBox> shown = new QMessageBox(QApplication::activeWindow());
    shown->setWindowTitle(box.title);
    shown->setTextFormat(Qt::PlainText);
    shown->setText(ShownMessage(box.text));
    shown->setIconPixmap(theme::IconPixmap(
        QLatin1String(icon.name), IconSide,
        theme::ReadableOn(QColor(icon.color), shown->palette().color(QPalette::Window), 3),
        shown->devicePixelRatioF()));
    QAbstractButton* other = nullptr;
    if (box.captions.size() == 2) {
        // One role for both: the desktop's order of roles could put the safe one last.
        QPushButton* safe = shown->addButton(box.captions[0], QMessageBox::ActionRole);
        other = shown->addButton(box.captions[1], QMessageBox::ActionRole);
        shown->setDefaultButton(safe);
        shown->setEscapeButton(safe);
    } else {
        shown->setStandardButtons(buttons.shown);
        shown->setDefaultButton(buttons.safe);
        shown->setEscapeButton(buttons.safe);
    }
    shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
    shown->setAccessibleName(box.title);
    run(shown);

    // Gone with its window, or closed from outside: nobody answered.
    BoxAnswer answer = buttons.safeAnswer;
    if (shown && other && shown->clickedButton() == other) {
        answer = box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
    } else if (shown && !other && shown->clickedButton() != nullptr) {
        const auto button = shown->standardButton(shown->clickedButton());
        answer = std::ranges::find(AnswerRows, button, &AnswerRow::button)->answer;
    }
    delete shown;
    return answer;
}

std::optional<QString> MessageBoxes::openFile(const FileQuestion& question) {
    return runFileDialog(question, false);
}

std::optional<QString> MessageBoxes::saveFile(const FileQuestion& question) {
    return runFileDialog(question, true);
}

std::optional<QString> MessageBoxes::runFileDialog(const FileQuestion& question, bool saves) {
    const QPointer<QFileDialog> dialog =
        new QFileDialog(QApplication::activeWindow(), question.title, question.folder,
                        FileDialogFilter(question.filter));
    dialog->setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(question.fileName);
    QString suffix = question.defaultExtension;
    if (suffix.startsWith(QLatin1Char('.')))
        suffix.remove(0, 1);
    dialog->setDefaultSuffix(suffix);

    std::optional<QString> path;
    if (run(dialog) == QDialog::Accepted && dialog && !dialog->selectedFiles().isEmpty())
        path = dialog->selectedFiles().constFirst();
    delete dialog;
    return path;
}

int MessageBoxes::run(QDialog* dialog) {
    if (m_shutDown)
        return QDialog::Rejected;
    m_open.append(dialog);
    const int result = dialog->exec();
    m_open.removeIf([dialog](const QPointer<QDialog>& open) { return !open || open == dialog; });
    return result;
}

void MessageBoxes::shutDown() {
    m_shutDown = true;
    closeAll();
}

void MessageBoxes::closeAll() {
    const QList<QPointer<QDialog>> open = m_open;
    for (auto dialog = open.rbegin(); dialog != open.rend(); ++dialog)
        if (*dialog)
            (*dialog)->done(QDialog::Rejected);
}

} // namespace kelvrane
