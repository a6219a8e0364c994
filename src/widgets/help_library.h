// The help file as the help window reads it: pages by their names, contents, index, and a search
// over all words. The viewer's library keeps a collection beside the file; a damaged one is made
// anew.
#pragma once

#include "frame/help_search.h"

#include <QList>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <optional>

class QAbstractItemModel;
class QHelpEngine;
class QModelIndex;

namespace kelvrane {

struct HelpLink {
    QUrl page;
    QString title;
};

class HelpLibrary : public QObject {
    Q_OBJECT
  public:
    /// Opens the copy in the program's folder, renewed before, or the one that came with the
    /// program where there can be no copy. Raises FileNotFound, with a sentence for the user, when
    /// there is no help file that can be read.
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

    /// Pages with all of the words that were typed; the first search reads all pages.
    QList<HelpHit> search(const QString& typed);

  signals:
    void contentsReady();

  private:
    bool open(const QString& file, const QString& collection);
    bool openElsewhere();
    QList<HelpText> readTexts() const;

    std::optional<QTemporaryDir> m_spare; ///< for the collection, where it can't be kept
    std::unique_ptr<QHelpEngine> m_engine;
    QList<HelpText> m_texts; ///< of all pages; empty before the first search
};

} // namespace kelvrane
