// Two panels and the movable bar between them. The place of the bar is kept by whoever uses it:
// the splitter asks for it whenever it is laid out, and tells when the user moved it.
//
//     auto* bar = new BarSplitter(Qt::Horizontal, [&] (int space) { return space / 2; }, this);
#pragma once

#include <QSplitter>

#include <functional>

namespace kelvrane {

class BarSplitter : public QSplitter {
    Q_OBJECT
  public:
    /// Pixels of the first panel, of the space that both share.
    using Place = std::function<int(int space)>;

    BarSplitter(Qt::Orientation orientation, Place place, QWidget* parent = nullptr);

    /// Puts the bar where it belongs. Nothing while a panel is hidden.
    void place();

  signals:
    /// By mouse or keyboard. The bar is placed anew afterwards, so bounds hold.
    void Moved(int first, int space);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    QSplitterHandle* createHandle() override;

  private:
    int space() const;

    Place m_place;
};

} // namespace kelvrane
