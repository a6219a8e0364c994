// The list that drops down from a row of a panel. It is a window of its own, so a refill of the
// panel leaves it open.
#pragma once

#include <QFrame>
#include <QStringListModel>

class QListView;

namespace kelvrane {

class ChoicePopup : public QFrame {
    Q_OBJECT
  public:
    explicit ChoicePopup(QWidget* parent);

    /// Opens under the rectangle (over it where there is no room), with the value chosen.
    void open(const QRect& globalAnchor, const QStringList& choices, const QString& value);
    /// Takes new choices while open; the row chosen stays by its text.
    void setChoices(const QStringList& choices);
    QStringList choices() const { return m_model.stringList(); }
    /// Goes to the next choice that begins with the text typed.
    void search(const QString& text);
    QListView* list() const { return m_list; }

  signals:
    /// 0-based place of the choice. The popup is closed by then.
    void chosen(int place);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void accept(int place);

    QStringListModel m_model;
    QListView* m_list;
};

} // namespace kelvrane
