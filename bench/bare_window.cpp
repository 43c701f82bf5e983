// The least that a Qt window can be: what vrk-isp's start is compared with.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QLabel window("A window");
    window.resize(640, 480);
    window.show();
    return QApplication::exec();
}
