#include "app/startarguments.h"

#include <QFileInfo>

namespace {

QString helpText()
{
    return QStringLiteral(
        "Usage: zephrant [options] [FILE...]\n"
        "Turns elevation data into photorealistic pictures and flight animations.\n"
        "\n"
        "The files are opened in their order: sceneries (.zph) and pictures (.bmp, "
        ".jpg,\n"
        ".png, .ppm, .tga, .tif).\n"
        "\n"
        "Options:\n"
        "  --help     Prints this text.\n"
        "  --version  Prints the version.\n"
        "  --         What follows are files, whatever their names begin with.\n"
        "Options of the Qt toolkit, such as -platform and -style, act as well.\n"
        "\n"
        "Examples:\n"
        "  zephrant                        begins with an empty workspace\n"
        "  zephrant valley.zph             opens a scenery\n"
        "  zephrant valley.zph valley.png  opens a scenery and a picture\n"
        "\n"
        "zephrant-render draws the frames of a scenery without a window.\n");
}

} // namespace

StartArguments StartArguments::read(const QStringList &arguments)
{
    StartArguments start;
    bool filesOnly = false;
    for (const QString &word : arguments.mid(1)) {
        if (filesOnly || !word.startsWith(QLatin1Char('-'))) {
            // An empty name stays empty: it is told of as no file at all.
            start.files << (word.isEmpty() ? word : QFileInfo(word).absoluteFilePath());
        } else if (word == QLatin1String("--")) {
            filesOnly = true;
        } else if (start.answer == Answer::None) {
            if (word == QLatin1String("--help"))
                start.answer = Answer::Help;
            else if (word == QLatin1String("--version"))
                start.answer = Answer::Version;
        }
    }
    return start;
}

QString StartArguments::text() const
{
    switch (answer) {
    case Answer::Help:
        return helpText();
    case Answer::Version:
        return QStringLiteral("zephrant " ZEPHRANT_VERSION "\n");
    case Answer::None:
        break;
    }
    return {};
}
