// The smallest Qt program with an item in the tray.

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QPixmap picture(16, 16);
    picture.fill(Qt::white);
    QSystemTrayIcon item { QIcon(picture) };
    item.show();
    return QApplication::exec();
}
