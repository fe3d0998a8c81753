// What any program with a main window costs, one of a toolbar, a label and a page: the yardstick of
// startup_bench.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>
#include <QToolBar>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.addToolBar(QStringLiteral("Commands"))->addAction(QStringLiteral("Open"));
    auto* tabs = new QTabWidget;
    tabs->addTab(new QLabel(QStringLiteral("A page")), QStringLiteral("Page"));
    window.setCentralWidget(tabs);
    window.resize(1040, 700);
    window.show();
    return QApplication::exec();
}
