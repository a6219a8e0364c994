// The list of databases on the sheet's screen: a column of tick marks, the aliases, and their
// files.
#pragma once

#include "widgets/card.h"

class QListView;

namespace kelvrane {

class frmSpreadsheetDatabases : public Card {
    Q_OBJECT
  public:
    explicit frmSpreadsheetDatabases(QWidget* parent = nullptr);

    /// The rectangle of a database in this widget's coordinates; empty when it isn't listed.
    QRect rowRect(const QString& key) const;

    QSize sizeHint() const override;

  private:
    QListView* m_view; ///< on the left edge; its viewport takes the mouse
};

} // namespace kelvrane
