// The help file as the help window reads it: pages by their names, contents, index, and a search
// over all words. The collection that the search and the index need is made at the first use, the
// words in the background; whatever of it is damaged is made anew.
#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QUrl>

#include <memory>

class QAbstractItemModel;
class QHelpEngine;
class QModelIndex;

namespace kelvrane {

/// A page found, with the words around the place.
struct HelpHit {
    QUrl page;
    QString title;
    QString words; ///< plain text, one line
};

struct HelpLink {
    QUrl page;
    QString title;
};

class HelpLibrary : public QObject {
    Q_OBJECT
  public:
    /// Opens the copy in the program's folder, renewed before. Raises FileNotFound, with a sentence
    /// for the user, when there is no help file that can be read.
    HelpLibrary();
    ~HelpLibrary() override;

    /// Address of a page by its name in the help file; an empty address for one that isn't there.
    QUrl pageAddress(const QString& page) const;
    /// The page that the contents begin with; empty until contentsReady.
    QUrl contentsPage() const;
    bool has(const QUrl& address) const;
    /// Nothing for an address outside the help file.
    QByteArray data(const QUrl& address) const;

    QAbstractItemModel* contents() const;
    QUrl contentsAddress(const QModelIndex& index) const;
    /// Where the contents name the page; an invalid index when they don't.
    QModelIndex contentsPlace(const QUrl& address) const;

    QAbstractItemModel* index() const;
    QList<HelpLink> pagesOf(const QString& keyword) const;

    /// Looks for pages with all of the words, the last one as a beginning; found comes later. A new
    /// search takes the place of one that runs.
    void search(const QString& words);

  signals:
    void contentsReady();
    void found(const QList<HelpHit>& hits);

  private:
    bool open();
    void takeResults();

    std::unique_ptr<QHelpEngine> m_engine;
    QString m_words; ///< of the last search
};

} // namespace kelvrane
