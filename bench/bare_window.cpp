// The least that a program with a main window costs: the yardstick of startup_bench.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1040, 700);
    window.show();
    return QApplication::exec();
}
