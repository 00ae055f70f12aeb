#include "shell/mainwindow.h"

#include <QApplication>
#include <QIcon>

#include <memory>

int qInitResources_Zephrant();

int main(int argc, char *argv[])
{
    qInitResources_Zephrant();
    QApplication application(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/ZephrantLogo.png")));
    const auto window = std::make_unique<MainWindow>();
    window->show();
    return QApplication::exec();
}
