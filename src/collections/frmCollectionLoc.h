// The location of the current collection on screen: drives and folders on the left, the collections
// in the folder on the right, the two fields that count below.
#pragma once

#include <QWidget>

class QComboBox;
class QLineEdit;
class QMenu;

namespace kelvrane {

class EntryList;
class KeyedPanel;
class KeyedToolBar;

class frmCollectionLoc : public QWidget {
    Q_OBJECT
  public:
    explicit frmCollectionLoc(QWidget* parent = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void arrange();
    QWidget* createFolders();
    QWidget* createNaming();
    void bind();
    void refresh();
    void showNaming();

    QComboBox* Drive1;
    EntryList* Dir1;
    EntryList* File1;
    KeyedPanel* smuiCollLoc;
    QWidget* m_naming; ///< the name of a new folder, in the panel's place
    QLineEdit* txtNewFolderName;
    QMenu* mnuNewFolder;
};

} // namespace kelvrane
