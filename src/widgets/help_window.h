// The program's own help window: contents, index and search on the left, a page on the right. It
// belongs to no screen and comes and goes by itself; nothing of the help is loaded before its first
// use, and all of it goes when the window is closed.
#pragma once

#include "platform/keyed_items.h"
#include "platform/ports.h"
#include "widgets/help_library.h"

#include <QPointer>
#include <QWidget>

namespace kelvrane {

class BarSplitter;
class FindBar;
class HelpContents;
class HelpIndex;
class HelpPageView;
class HelpSearch;
class TabStrip;

class HelpWindow : public QWidget {
    Q_OBJECT
  public:
    /// Raises what HelpLibrary raises.
    HelpWindow();
    ~HelpWindow() override;

    /// Turns to a page of the help file by its name; empty or unknown: the contents' first page.
    void turnTo(const QString& page);
    /// Brings the window up, above a box that waits for an answer as well.
    void present();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* createSide();
    QWidget* createPage();
    void bind();
    void run(const QString& key);
    void showState();
    void readLayout();
    void storeLayout();

    HelpLibrary m_library;
    KeyedItems m_tools;
    KeyedItems m_tabs;
    TabStrip* m_strip;
    HelpContents* m_contents;
    HelpIndex* m_index;
    HelpSearch* m_search;
    HelpPageView* m_page;
    FindBar* m_find;
    BarSplitter* m_splitter;
    int m_sideWidth;              ///< logical pixels
    bool m_wantsContents = false; ///< as soon as they are read
};

/// The port: one window, made at the first use and again after it was closed.
class HelpViewer : public Help {
  public:
    ~HelpViewer() override;
    void show(const QString& page) override;
    void close();
    HelpWindow* window() const { return m_window; }

  private:
    QPointer<HelpWindow> m_window;
};

} // namespace kelvrane
