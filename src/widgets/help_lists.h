// The left column of the help window: the contents as a tree, the index with a field to narrow it,
// and the search with the pages found. Each tells which page the user chose.
#pragma once

#include "widgets/help_library.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QModelIndex;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTreeView;

namespace kelvrane {

class HelpContents : public QWidget {
    Q_OBJECT
  public:
    /// The library outlives the lists.
    explicit HelpContents(const HelpLibrary* library, QWidget* parent = nullptr);

    /// Marks the page that is shown.
    void setCurrent(const QUrl& page);

  signals:
    void chosen(const QUrl& page);

  private:
    const HelpLibrary* m_library;
    QTreeView* m_tree;
    QUrl m_current;
};

class HelpIndex : public QWidget {
    Q_OBJECT
  public:
    explicit HelpIndex(const HelpLibrary* library, QWidget* parent = nullptr);

  signals:
    void chosen(const QUrl& page);

  private:
    void choose(const QModelIndex& index);

    const HelpLibrary* m_library;
    QLineEdit* m_word;
    QListView* m_list;
    QSortFilterProxyModel* m_rows;
};

class HelpSearch : public QWidget {
    Q_OBJECT
  public:
    explicit HelpSearch(HelpLibrary* library, QWidget* parent = nullptr);

    QString words() const;

  signals:
    void chosen(const QUrl& page);

  private:
    void show(const QList<HelpHit>& hits);
    void choose(const QModelIndex& index);

    QLineEdit* m_words;
    QLabel* m_answer;
    QListView* m_list;
    QStandardItemModel* m_hits;
};

} // namespace kelvrane
