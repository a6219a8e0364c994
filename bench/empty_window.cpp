// The floor of the start benchmark: what a window with a tool bar, a tray icon and a table of 12 by
// 9 cells costs on this machine, before a program does anything. Says "first paint" on standard
// error when the window has painted once; with "close" as argument it then deletes the window and
// stays in the tray.
#include <QApplication>
#include <QIcon>
#include <QMainWindow>
#include <QPixmap>
#include <QStandardItemModel>
#include <QSystemTrayIcon>
#include <QTableView>
#include <QTimer>

#include <cstdio>

namespace {

class Window : public QMainWindow {
  public:
    explicit Window(bool closes) : m_closes(closes) {
        auto* table = new QTableView(this);
        auto* model = new QStandardItemModel(12, 9, table);
        for (int row = 0; row < model->rowCount(); ++row)
            for (int column = 0; column < model->columnCount(); ++column)
                model->setItem(row, column, new QStandardItem(QStringLiteral("0.25")));
        table->setModel(model);
        setCentralWidget(table);
        table->viewport()->installEventFilter(this);
        resize(720, 480);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QTimer::singleShot(0, this, [this] {
                std::fputs("first paint\n", stderr);
                if (m_closes)
                    deleteLater();
            });
        }
        return QMainWindow::eventFilter(watched, event);
    }

  private:
    bool m_closes;
    bool m_painted = false;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap face(22, 22);
    face.fill(Qt::darkGreen);
    QSystemTrayIcon tray{QIcon(face)};
    tray.show();
    auto* window = new Window(application.arguments().value(1) == QStringLiteral("close"));
    window->show();
    return QApplication::exec();
}
