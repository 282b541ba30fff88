#include <QApplication>
#include <QMainWindow>
#include <QWebEngineView>
#include <cstdio>

/// The least that a program with an embedded browser does: a window with an empty page. Says "shown" on the
/// standard output when the page is there. Usage: bare_window [PAGE WIDTH HEIGHT]
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    auto* const view = new QWebEngineView(&window);
    window.setCentralWidget(view);
    QObject::connect(view, &QWebEngineView::loadFinished, &window, [] {
        std::puts("shown");
        std::fflush(stdout);
    });
    const QStringList arguments = QApplication::arguments();
    const bool hasPage = arguments.size() > 3;
    if (hasPage)
        window.resize(arguments[2].toInt(), arguments[3].toInt());
    view->load(hasPage ? QUrl::fromLocalFile(arguments[1]) : QUrl(QStringLiteral("about:blank")));
    window.show();
    return QApplication::exec();
}
