// The bar of a sheet editor: how the selected cells look. Its groups stand in one row, or in more
// where there is no room.
#pragma once

#include "worksheet/sheet_actions.h"

#include <QHash>
#include <QWidget>

class QComboBox;
class QMenu;

namespace kelvrane {

class FlatButton;

class FormatBar : public QWidget {
    Q_OBJECT
  public:
    /// The session outlives it. Each button's object name is its action's key.
    explicit FormatBar(SheetSession* session, QWidget* parent = nullptr);

    /// Opens the list or menu of an action ("font", "size", "format", "ink", "fill", "borders");
    /// false for any other.
    bool open(QLatin1String key);
    /// Puts the keys on the bar's first control.
    void takeFocus();

  signals:
    void actionWanted(const kelvrane::SheetAction& action);
    void sheetWanted(); ///< the keys belong to the sheet again

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    using Choice = void (*)(Spreadsheet&, const CellRange&, const QString&);

    QWidget* addGroup();
    void addButton(QWidget* group, const SheetAction& action);
    QComboBox* addList(QWidget* group, const SheetAction& action, int width, Choice choose);
    QMenu* addMenu(const SheetAction& action);
    void fillLists();
    void fillColors(QMenu* menu, const QString& none,
                    void (*set)(Spreadsheet&, const CellRange&, QRgb));
    void fillBorders(QMenu* menu);
    void run(const std::function<void()>& change);
    void refresh();
    void placeGroups();

    SheetSession* m_session;
    QList<QWidget*> m_groups;
    QHash<QString, FlatButton*> m_buttons;
    QHash<QString, QComboBox*> m_lists;
};

} // namespace kelvrane
