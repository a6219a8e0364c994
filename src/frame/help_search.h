// The search over the words of the help. The help is small: every search reads all of it, in less
// time than a key takes.
#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace kelvrane {

/// A page's words without its marks, white space as single blanks.
struct HelpText {
    QUrl page;
    QString title;
    QString text;
};

/// A page found, with the words around the first place.
struct HelpHit {
    QUrl page;
    QString title;
    QString words;
};

/// The words of what the user typed, without signs.
QStringList HelpSearchWords(const QString& typed);

/// Pages that have all of the words, each as the beginning of a word in any case: first those that
/// have most of them in their title, then those that have them most often. Nothing for no words.
QList<HelpHit> SearchHelp(const QList<HelpText>& pages, const QStringList& words);

} // namespace kelvrane
