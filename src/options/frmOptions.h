// The options screen: the pages of OptionsModel behind their tabs. Every change counts at once.
#pragma once

#include <QDialog>

class QBoxLayout;

namespace kelvrane {

class TabStrip;
struct OptionGroup;

class frmOptions : public QDialog {
    Q_OBJECT
  public:
    /// The load.
    explicit frmOptions(QWidget* parent = nullptr);

    /// Esc and the close box are Close. What is still being typed is handed over first.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void arrange();
    void bind();
    void turnTo(const QString& page);
    void addPage(int place, QWidget* content);
    QWidget* createKelvranePage();
    QWidget* createGroup(const OptionGroup& group, QWidget* page);
    QWidget* createSpreadSheetPage();
    QWidget* createDatabasePage();
    QWidget* createMiscPage();

    TabStrip* SmartTabStrip = nullptr;
    QBoxLayout* columns = nullptr; ///< of the page KELVRANE
};

} // namespace kelvrane
