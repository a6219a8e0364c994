// A page of the help file on screen. It shows what the help file holds and nothing else: no other
// file and nothing from the network is ever read. A link that leads outside is handed to the
// desktop when it is clicked.
#pragma once

#include <QTextBrowser>

namespace kelvrane {

class HelpLibrary;

class HelpPageView : public QTextBrowser {
    Q_OBJECT
  public:
    /// The library outlives the page.
    explicit HelpPageView(const HelpLibrary* library, QWidget* parent = nullptr);

    /// Turns to an address of the help file; asks for the contents when it isn't there.
    void turnTo(const QUrl& address);

    /// In steps of a tenth; 0 is the size of the program's font.
    int zoom() const { return m_zoom; }
    void setZoom(int steps);

    /// Selects the next place of the text, from the beginning again after the last one. False when
    /// there is none. From the selection on while the text is being typed.
    bool find(const QString& text, bool backward, bool typing = false);

    /// Prints the page as on white paper, after asking for the printer.
    void print();

    QVariant loadResource(int type, const QUrl& address) override;

  signals:
    void contentsWanted();

  protected:
    void doSetSource(const QUrl& address, QTextDocument::ResourceType type) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void follow(const QUrl& link);
    int column() const;
    void layOut();
    void refresh();

    const HelpLibrary* m_library;
    int m_zoom = 0;
    int m_column = 0; ///< that the page was laid out for, logical pixels
    bool m_refreshing = false;
};

} // namespace kelvrane
