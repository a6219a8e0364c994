#include "widgets/help_window.h"

#include "frame/error_report.h"
#include "platform/settings_store.h"
#include "widgets/bar_splitter.h"
#include "widgets/card.h"
#include "widgets/find_bar.h"
#include "widgets/help_lists.h"
#include "widgets/help_page_view.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace kelvrane {

namespace {

constexpr QSize startSize(980, 660);
constexpr QSize leastSize(480, 320);
constexpr int startSide = 300, leastSide = 180, leastPage = 240;

const QString section = QStringLiteral("Help");

QString T(const char* text) {
    return QString::fromLatin1(text);
}

struct Tool {
    const char* key;
    const char* caption;
    const char* toolTip;
    const char* image;
    ItemKind kind = ItemKind::Button;
    const char* keys = "";
};
constexpr Tool tools[] = {
    {"BACK", "Back", "The page before (Alt+Left)", "prev", ItemKind::Button, "Alt+Left"},
    {"FORWARD", "Forward", "The page after (Alt+Right)", "next", ItemKind::Button, "Alt+Right"},
    {"HOME", "Contents", "The first page (Alt+Home)", "home", ItemKind::Button, "Alt+Home"},
    {"", "", "", "", ItemKind::Separator},
    {"SMALLER", "Smaller", "Smaller text (Ctrl+-)", "zoomout", ItemKind::Button, "Ctrl+-"},
    {"LARGER", "Larger", "Larger text (Ctrl++)", "zoomin", ItemKind::Button, "Ctrl++"},
    {"", "", "", "", ItemKind::Separator},
    {"FIND", "Find", "Find on this page (Ctrl+F)", "search", ItemKind::Button, "Ctrl+F"},
    {"PRINT", "Print", "Print this page (Ctrl+P)", "print", ItemKind::Button, "Ctrl+P"},
};

struct Tab {
    const char* key;
    const char* caption;
    const char* keys;
};
constexpr Tab tabs[] = {
    {"CONTENTS", "Contents", "Ctrl+1"},
    {"INDEX", "Index", "Ctrl+2"},
    {"SEARCH", "Search", "Ctrl+3"},
};

struct Key {
    const char* keys;
    const char* command;
};
constexpr Key furtherKeys[] = {
    {"Ctrl+=", "LARGER"},         {"Ctrl+0", "ORIGINAL"}, {"F3", "FINDNEXT"},
    {"Shift+F3", "FINDPREVIOUS"}, {"Ctrl+W", "CLOSE"},
};

} // namespace

HelpWindow::HelpWindow() : m_sideWidth(startSide) {
    setObjectName(T("HelpWindow"));
    setWindowTitle(T("Kelvrane Help"));
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumSize(leastSize);
    for (const Tool& tool : tools)
        m_tools.append({.key = T(tool.key),
                        .caption = T(tool.caption),
                        .kind = tool.kind,
                        .toolTip = T(tool.toolTip),
                        .image = T(tool.image)});
    for (const Tab& tab : tabs)
        m_tabs.append({.key = T(tab.key), .caption = T(tab.caption)});
    m_splitter = new BarSplitter(
        Qt::Horizontal,
        [this](int space) {
            return std::clamp(m_sideWidth, leastSide, std::max(leastSide, space - leastPage));
        },
        this);
    m_splitter->addWidget(createSide());
    m_splitter->addWidget(createPage());
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Step, 0, theme::Step, theme::Step);
    content->setSpacing(theme::Step / 2);
    content->addWidget(new KeyedToolBar(&m_tools, this));
    content->addWidget(m_splitter, 1);
    bind();
    readLayout();
    showState();
    m_page->setFocus();
}

HelpWindow::~HelpWindow() {
    disconnect(&m_library, nullptr, nullptr, nullptr); // the lists are going
}

QWidget* HelpWindow::createSide() {
    m_strip = new TabStrip(&m_tabs, this);
    m_strip->setObjectName(T("HelpTabs"));
    m_contents = new HelpContents(&m_library, m_strip);
    m_index = new HelpIndex(&m_library, m_strip);
    m_search = new HelpSearch(&m_library, m_strip);
    const std::pair<const char*, QWidget*> pages[] = {
        {"CONTENTS", m_contents}, {"INDEX", m_index}, {"SEARCH", m_search}};
    for (const auto& [key, page] : pages) {
        m_strip->bindPage(T(key), page);
        connect(m_strip, &TabStrip::changed, page,
                [name = T(key), page = page](const QString& now) {
                    if (now == name)
                        page->setFocus();
                });
    }
    connect(m_search, &HelpSearch::chosen, this, [this](const QUrl& page) {
        m_page->turnTo(page);
        m_page->find(m_search->words().trimmed().section(u' ', 0, 0), false);
    });
    return m_strip;
}

QWidget* HelpWindow::createPage() {
    auto* card = new Card(this);
    m_page = new HelpPageView(&m_library, card);
    m_find = new FindBar(card);
    auto* content = new QVBoxLayout(card);
    content->setContentsMargins(1, 1, 1, 1);
    content->setSpacing(0);
    content->addWidget(m_page, 1);
    content->addWidget(m_find);
    connect(m_contents, &HelpContents::chosen, m_page, &HelpPageView::turnTo);
    connect(m_index, &HelpIndex::chosen, m_page, &HelpPageView::turnTo);
    connect(m_find, &FindBar::wanted, m_page,
            [this](const QString& text, bool backward, bool typing) {
                m_find->setFound(m_page->find(text, backward, typing));
            });
    connect(m_find, &FindBar::closed, m_page, [this] { m_page->setFocus(); });
    return card;
}

void HelpWindow::bind() {
    connect(&m_tools, &KeyedItems::Clicked, this, &HelpWindow::run);
    const auto addKey = [this](const char* keys, const QString& command) {
        connect(new QShortcut(QKeySequence(T(keys)), this), &QShortcut::activated, this,
                [this, command] { run(command); });
    };
    for (const Tool& tool : tools)
        if (*tool.keys != '\0')
            addKey(tool.keys, T(tool.key));
    for (const Key& key : furtherKeys)
        addKey(key.keys, T(key.command));
    for (const Tab& tab : tabs)
        connect(new QShortcut(QKeySequence(T(tab.keys)), this), &QShortcut::activated, m_strip,
                [this, key = T(tab.key)] { m_strip->setCurrent(key); });
    connect(m_page, &HelpPageView::contentsWanted, this, [this] { turnTo({}); });
    connect(m_page, &QTextBrowser::sourceChanged, this, &HelpWindow::showState);
    connect(m_page, &QTextBrowser::historyChanged, this, &HelpWindow::showState);
    connect(&m_library, &HelpLibrary::contentsReady, this, [this] {
        if (std::exchange(m_wantsContents, false))
            turnTo({});
    });
    connect(m_splitter, &BarSplitter::Moved, this,
            [this](int first, int /*space*/) { m_sideWidth = first; });
}

void HelpWindow::run(const QString& key) {
    struct Command {
        const char* key;
        void (*run)(HelpWindow& help);
    };
    static constexpr Command commands[] = {
        {"BACK", [](HelpWindow& help) { help.m_page->backward(); }},
        {"FORWARD", [](HelpWindow& help) { help.m_page->forward(); }},
        {"HOME", [](HelpWindow& help) { help.turnTo({}); }},
        {"SMALLER", [](HelpWindow& help) { help.m_page->setZoom(help.m_page->zoom() - 1); }},
        {"LARGER", [](HelpWindow& help) { help.m_page->setZoom(help.m_page->zoom() + 1); }},
        {"ORIGINAL", [](HelpWindow& help) { help.m_page->setZoom(0); }},
        {"FIND", [](HelpWindow& help) { help.m_find->open(); }},
        {"FINDNEXT", [](HelpWindow& help) { help.m_find->step(false); }},
        {"FINDPREVIOUS", [](HelpWindow& help) { help.m_find->step(true); }},
        {"PRINT", [](HelpWindow& help) { help.m_page->print(); }},
        {"CLOSE", [](HelpWindow& help) { help.close(); }},
    };
    for (const Command& command : commands)
        if (key == QLatin1String(command.key)) {
            Guarded(T("HelpWindow"), [&] { command.run(*this); });
            return; // the window may be gone
        }
}

void HelpWindow::turnTo(const QString& page) {
    const QUrl named = m_library.pageAddress(page);
    const QUrl address = named.isEmpty() ? m_library.contentsPage() : named;
    m_wantsContents = address.isEmpty();
    if (m_library.has(address))
        m_page->turnTo(address);
}

void HelpWindow::showState() {
    m_tools.setEnabled(T("BACK"), m_page->isBackwardAvailable());
    m_tools.setEnabled(T("FORWARD"), m_page->isForwardAvailable());
    m_contents->setCurrent(m_page->source());
    const QString title = m_page->documentTitle();
    const QString own = T("Kelvrane Help");
    setWindowTitle(title.isEmpty() || title == own ? own : title + T(" - ") + own);
}

/// A modal box would keep the help from being read while it waits; a window that belongs to the box
/// isn't kept.
void HelpWindow::present() {
    winId();
    QWidget* box = QApplication::activeModalWidget();
    QWindow* above = box && box != this ? box->window()->windowHandle() : nullptr;
    if (windowHandle()->transientParent() != above) {
        hide();
        windowHandle()->setTransientParent(above);
    }
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        QWidget::keyPressEvent(event);
    else if (m_find->isVisible())
        m_find->shut();
    else
        close();
}

void HelpWindow::closeEvent(QCloseEvent* event) {
    storeLayout();
    QWidget::closeEvent(event);
}

void HelpWindow::readLayout() {
    const auto number = [](const char* key, double fallback) {
        bool isNumber = false;
        const double value = ports.settings->section(section, T(key), {}).toDouble(&isNumber);
        return isNumber ? value : fallback;
    };
    const QSize size(theme::FromTwips(number("Width", theme::ToTwips(startSize.width()))),
                     theme::FromTwips(number("Height", theme::ToTwips(startSize.height()))));
    resize(size.expandedTo(leastSize).boundedTo(screen()->availableSize()));
    m_sideWidth = theme::FromTwips(number("Contents", theme::ToTwips(startSide)));
    m_page->setZoom(static_cast<int>(number("Zoom", 0)));
}

void HelpWindow::storeLayout() {
    const QSize size = isMaximized() ? normalGeometry().size() : this->size();
    const std::pair<const char*, double> values[] = {
        {"Width", theme::ToTwips(size.width())},
        {"Height", theme::ToTwips(size.height())},
        {"Contents", theme::ToTwips(m_sideWidth)},
        {"Zoom", m_page->zoom()},
    };
    ports.settings->beginChanges();
    for (const auto& [key, value] : values)
        ports.settings->setSection(section, T(key), QString::number(value));
    ports.settings->endChanges(); // a layout that can't be kept is no reason for a box
}

HelpViewer::~HelpViewer() {
    close();
}

void HelpViewer::close() {
    if (!m_window)
        return;
    m_window->close(); // keeps its layout
    delete m_window.data();
}

void HelpViewer::show(const QString& page) {
    try {
        if (!m_window)
            m_window = new HelpWindow;
        m_window->turnTo(page);
        m_window->present();
    } catch (const RuntimeError& error) {
        MsgBox(error.description, QStringLiteral("Kelvrane Help"), BoxIcon::Exclamation);
    }
}

} // namespace kelvrane
