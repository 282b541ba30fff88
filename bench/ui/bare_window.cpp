#include <QApplication>
#include <QMainWindow>
#include <QWebEngineView>
#include <cstdio>

/// The least that a program with an embedded browser does: a window with an empty page. Says "shown" on the
/// standard output when the page is there.
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    auto* const view = new QWebEngineView(&window);
    window.setCentralWidget(view);
    QObject::connect(view, &QWebEngineView::loadFinished, &window, [] {
        std::puts("shown");
        std::fflush(stdout);
    });
    view->load(QUrl(QStringLiteral("about:blank")));
    window.show();
    return QApplication::exec();
}
