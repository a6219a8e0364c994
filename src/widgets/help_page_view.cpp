#include "widgets/help_page_view.h"

#include "frame/error_report.h"
#include "platform/ports.h"
#include "widgets/help_library.h"
#include "widgets/help_style.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QPagedPaintDevice>
#include <QPointer>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextDocument>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr int widestColumn = 760; // longer lines are hard to follow
constexpr int paperColumn = 620;  // of A4 and Letter, in the pixels of a page
constexpr int leastZoom = -4, mostZoom = 10;
constexpr int pageMargin = theme::Gap;
constexpr const char* outsideSchemes[] = {"http", "https", "mailto", "ftp"};

/// The same page for the printer.
class PaperPage final : public QTextDocument {
  public:
    PaperPage(const HelpLibrary& library, const QUrl& address)
        : m_library(library), m_address(address) {
        setDefaultStyleSheet(HelpStyle(QPalette(Qt::white)));
        setHtml(QString::fromUtf8(library.data(address)));
        FitPictures(
            *this, address, [&](const QUrl& url) { return library.data(url); }, paperColumn, 1);
    }

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        return HelpResource(type, m_library.data(m_address.resolved(name)));
    }

  private:
    const HelpLibrary& m_library;
    QUrl m_address;
};

} // namespace

HelpPageView::HelpPageView(const HelpLibrary* library, QWidget* parent)
    : QTextBrowser(parent), m_library(library) {
    setObjectName(QStringLiteral("HelpPageView"));
    setAccessibleName(QStringLiteral("Help page"));
    setFrameShape(QFrame::NoFrame);
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    document()->setDocumentMargin(pageMargin);
    document()->setDefaultStyleSheet(HelpStyle(palette()));
    connect(this, &QTextBrowser::anchorClicked, this, &HelpPageView::follow);
}

void HelpPageView::turnTo(const QUrl& address) {
    if (m_library->has(address))
        setSource(address);
    else
        emit contentsWanted();
}

/// A link of a page. Only these kinds leave the program; a link to a file of the machine doesn't.
void HelpPageView::follow(const QUrl& link) {
    const auto isScheme = [&](const char* scheme) {
        return link.scheme() == QLatin1String(scheme);
    };
    if (link.scheme() == u"qthelp")
        turnTo(link);
    else if (std::ranges::any_of(outsideSchemes, isScheme))
        Guarded(QStringLiteral("HelpLink"), [&] { ports.launcher->open(link.toString()); });
}

QVariant HelpPageView::loadResource(int type, const QUrl& address) {
    return HelpResource(type, m_library->data(source().resolved(address)));
}

void HelpPageView::doSetSource(const QUrl& address, QTextDocument::ResourceType type) {
    QTextBrowser::doSetSource(address, type);
    layOut();
    if (address.hasFragment())
        scrollToAnchor(address.fragment());
}

int HelpPageView::column() const {
    return std::min(viewport()->width(), widestColumn);
}

void HelpPageView::layOut() {
    m_column = column();
    setLineWrapMode(FixedPixelWidth);
    setLineWrapColumnOrWidth(m_column);
    FitPictures(
        *document(), source(), [this](const QUrl& url) { return m_library->data(url); },
        m_column - 2 * pageMargin, devicePixelRatioF());
}

/// Colours are part of a page that is read, so a new palette reads it again.
void HelpPageView::refresh() {
    const QScopedValueRollback guard(m_refreshing, true);
    document()->setDefaultStyleSheet(HelpStyle(palette()));
    const int place = verticalScrollBar()->value();
    const QTextCursor selected = textCursor();
    const int anchor = selected.anchor(), position = selected.position();
    reload();
    layOut();
    QTextCursor again(document());
    again.setPosition(anchor);
    again.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(again);
    verticalScrollBar()->setValue(place);
}

void HelpPageView::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_refreshing && !source().isEmpty())
        refresh();
}

void HelpPageView::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (column() != m_column)
        layOut();
}

void HelpPageView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier)
        setZoom(m_zoom + (event->angleDelta().y() > 0 ? 1 : -1));
    else
        QTextBrowser::wheelEvent(event);
}

void HelpPageView::setZoom(int steps) {
    m_zoom = std::clamp(steps, leastZoom, mostZoom);
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * (1 + m_zoom / 10.0));
    setFont(font);
}

bool HelpPageView::find(const QString& text, bool backward, bool typing) {
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlag();
    const QTextCursor before = textCursor();
    QTextCursor from = before;
    if (typing)
        from.setPosition(before.selectionStart());
    QTextCursor hit = document()->find(text, from, flags);
    if (hit.isNull() && !text.isEmpty()) {
        from.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
        hit = document()->find(text, from, flags);
    }
    if (hit.isNull()) {
        from.setPosition(before.selectionStart());
        setTextCursor(from);
        return false;
    }
    setTextCursor(hit);
    // With some lines of what stands around it.
    const int off = cursorRect().center().y() - viewport()->height() / 3;
    if (cursorRect().bottom() > viewport()->height() * 3 / 4 || cursorRect().top() < pageMargin)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + off);
    return true;
}

void HelpPageView::print() {
    const QPointer<HelpPageView> self = this; // the window may be closed while the dialog is open
    if (!ports.printer->choose(QStringLiteral("Print Help")) || !self)
        return;
    const QString title = documentTitle();
    const PaperPage paper(*m_library, source());
    const bool printed =
        ports.printer->print(title, [&](QPagedPaintDevice& device) { paper.print(&device); });
    if (!printed)
        MsgBox(QStringLiteral("The page could not be printed."), QStringLiteral("Kelvrane Help"),
               BoxIcon::Exclamation);
}

} // namespace kelvrane
