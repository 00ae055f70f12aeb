#include "app/application.h"
#include "app/mainwindow.h"
#include "app/startarguments.h"
#include "base/failedwrites.h"

#include <QIcon>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

int qInitResources_Zephrant();

namespace {

// Also where there is no screen to open a window on.
bool printed(int argc, char **argv, int *status)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const QByteArray text = StartArguments::read(arguments).text().toLocal8Bit();
    if (text.isEmpty())
        return false;
    const bool good = std::fputs(text.constData(), stdout) >= 0;
    *status = std::fflush(stdout) == 0 && good ? EXIT_SUCCESS : EXIT_FAILURE;
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    surviveFailedWrites();
    int status = EXIT_SUCCESS;
    if (printed(argc, argv, &status))
        return status;
    qInitResources_Zephrant();
    Application application(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/ZephrantLogo.png")));
    const auto window = std::make_unique<MainWindow>();
    window->show();
    // Once the window is there: a file that cannot be opened is told of in a box.
    QTimer::singleShot(0, window.get(), [&window] {
        window->openGiven(StartArguments::read(QApplication::arguments()).files);
    });
    return QApplication::exec();
}
