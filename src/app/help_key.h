// F1 in every window of the program: screens, message boxes, menus, the help itself.
//
// The key is taken when nothing inside the window had a use for it. A sheet has: its F1 opens the
// sheet's own topic.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kelvrane {

class HelpKey : public QObject {
    Q_OBJECT
  public:
    /// The rule tells the help topic of a window. Menus and lists that are open belong to the
    /// window that they stand over, where there is one.
    using TopicOf = std::function<int(const QWidget* window)>;
    explicit HelpKey(TopicOf topicOf);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    TopicOf m_topicOf;
};

} // namespace kelvrane
