#include "batch/commandline.h"

#include "scene/scenerydocument.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

// The ranges of the input form; a value beyond them would be cut silently.
constexpr int MaxFrame = 32768;
constexpr int MinSide = 8;
constexpr int MaxSide = 32768;
constexpr int MaxQuality = 2;
constexpr int MaxThreads = 64;

struct Options {
    QCommandLineOption preview{QStringLiteral("preview"),
                               QStringLiteral("Render at half size on a quarter of the "
                                              "mesh.")};
    QCommandLineOption from{QStringLiteral("from"),
                            QStringLiteral("First frame, counted from 0 (default: the "
                                           "scenery's own)."),
                            QStringLiteral("N")};
    QCommandLineOption to{QStringLiteral("to"),
                          QStringLiteral("Last frame (default: the scenery's own)."),
                          QStringLiteral("N")};
    QCommandLineOption output{QStringLiteral("output"),
                              QStringLiteral("Name of the frame files without "
                                             "extension, such as image%04d."),
                              QStringLiteral("TEMPLATE")};
    QCommandLineOption format{QStringLiteral("format"),
                              QStringLiteral("Picture format: tga, png, jpg or ppm. May "
                                             "be given several times."),
                              QStringLiteral("FORMAT")};
    QCommandLineOption quality{QStringLiteral("quality"),
                               QStringLiteral("0 low, 1 high, 2 extra high."),
                               QStringLiteral("N")};
    QCommandLineOption size{QStringLiteral("size"),
                            QStringLiteral("Size of the frames in pixels."),
                            QStringLiteral("WxH")};
    QCommandLineOption fit{QStringLiteral("fit"),
                           QStringLiteral("The largest frames of the scenery's shape "
                                          "inside of W by H, focal lengths scaled with "
                                          "them."),
                           QStringLiteral("WxH")};
    QCommandLineOption set{
        QStringLiteral("set"),
        QStringLiteral("Sets a key of the scenery file or one of its "
                       "extras for this run, such as Exposure=0.5. May "
                       "be given several times; other options go "
                       "before it."),
        QStringLiteral("KEY=VALUE")};
    QCommandLineOption threads{QStringLiteral("threads"),
                               QStringLiteral("Threads that draw a frame (default: all "
                                              "cores). The pictures are the same."),
                               QStringLiteral("N")};
    QCommandLineOption missing{QStringLiteral("missing"),
                               QStringLiteral("Render only frames whose files are not "
                                              "there yet, or not whole, or of another "
                                              "size.")};
    QCommandLineOption quiet{QStringLiteral("quiet"),
                             QStringLiteral("No line for each frame.")};
};

class Reader {
public:
    Reader(const QCommandLineParser &parser, BatchOptions &options, QString *error)
        : m_parser(parser), m_options(options), m_error(error)
    {
    }

    template <typename Number>
    [[nodiscard]] bool number(const QCommandLineOption &option, int lowest, int highest,
                              Number &value) const
    {
        if (!m_parser.isSet(option))
            return true;
        bool ok = false;
        const int n = m_parser.value(option).toInt(&ok);
        if (!ok || n < lowest || n > highest)
            return wrong(QStringLiteral("--%1 takes a whole number from %2 to %3.")
                             .arg(option.names().constFirst())
                             .arg(lowest)
                             .arg(highest));
        value = n;
        return true;
    }

    [[nodiscard]] bool formats(const QCommandLineOption &option) const
    {
        static const QStringList known{QStringLiteral("tga"), QStringLiteral("png"),
                                       QStringLiteral("jpg"), QStringLiteral("ppm")};
        for (const QString &format : m_parser.values(option)) {
            if (!known.contains(format))
                return wrong(
                    QStringLiteral("--format: there is no format \"%1\"; choose from %2.")
                        .arg(format, known.join(QStringLiteral(", "))));
            m_options.formats << format;
        }
        return true;
    }

    [[nodiscard]] bool size(const QCommandLineOption &option, int least,
                            std::optional<QSize> &value) const
    {
        if (!m_parser.isSet(option))
            return true;
        static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
        const auto match = form.match(m_parser.value(option));
        const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
        const auto fits = [&](int side) { return side >= least && side <= MaxSide; };
        if (!match.hasMatch() || !fits(size.width()) || !fits(size.height()))
            return wrong(QStringLiteral("--%1 takes WxH with sides from %2 to %3.")
                             .arg(option.names().constFirst())
                             .arg(least)
                             .arg(MaxSide));
        value = size;
        return true;
    }

    // A preview has a size of its own.
    [[nodiscard]] bool oneSize() const
    {
        return !m_options.within || !m_options.preview ||
               wrong(QStringLiteral("--fit and --preview exclude each other."));
    }

    [[nodiscard]] bool output(const QCommandLineOption &option) const
    {
        if (!m_parser.isSet(option))
            return true;
        m_options.output = m_parser.value(option);
        return !m_options.output->isEmpty() ||
               wrong(QStringLiteral("--output takes a name template, which is empty."));
    }

    // Points are checked once the scenery is there.
    [[nodiscard]] bool settings(const QCommandLineOption &option) const
    {
        SceneryDocument any;
        for (const QString &text : m_parser.values(option)) {
            const Result<ScenerySetting> setting = settingOf(text);
            if (!setting)
                return wrong(QStringLiteral("--set: ") + setting.error().text);
            if (!isPointKey(setting->key))
                if (const Result<void> good = applySetting(any, *setting); !good)
                    return wrong(QStringLiteral("--set: ") + good.error().text);
            m_options.settings.append(*setting);
        }
        return true;
    }

    [[nodiscard]] bool range() const
    {
        if (!m_options.from || !m_options.to || *m_options.from <= *m_options.to)
            return true;
        return wrong(QStringLiteral("--from %1 lies above --to %2: there is no frame to "
                                    "render.")
                         .arg(*m_options.from)
                         .arg(*m_options.to));
    }

    [[nodiscard]] bool scenery() const
    {
        const QStringList names = m_parser.positionalArguments();
        if (names.size() != 1 || names.constFirst().isEmpty())
            return wrong(names.size() <= 1
                             ? QStringLiteral("No scenery file is named.")
                             : QStringLiteral("Only one scenery file can be named."));
        m_options.scenery = names.constFirst();
        return true;
    }

private:
    bool wrong(const QString &text) const
    {
        *m_error = text;
        return false;
    }

    const QCommandLineParser &m_parser;
    BatchOptions &m_options;
    QString *m_error;
};

// The parser's own sentence names an option without its hyphens.
QString complaintOf(const QCommandLineParser &parser)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (unknown.isEmpty())
        return parser.errorText();
    const QString &name = unknown.constFirst();
    return QStringLiteral("There is no option %1%2.")
        .arg(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"), name);
}

QString helpText(const QCommandLineParser &parser)
{
    return parser.helpText() +
           QStringLiteral(
               "\nExamples:\n"
               "  zephrant-render flight.zph\n"
               "      All frames of the scenery, as it names them.\n"
               "  zephrant-render --preview --from 10 --to 19 flight.zph\n"
               "      A quick look at ten frames.\n"
               "  zephrant-render --output 'night/frame%04d' --format png --missing "
               "flight.zph\n"
               "      Goes on where a run was broken off.\n"
               "  zephrant-render --set BrennA=500 --set BrennE=500 flight.zph\n"
               "      The same flight with half the focal length.\n"
               "\nExit status: 0 all frames are written, 1 a failure, 2 wrong usage, 130 "
               "stopped\nby SIGINT or SIGTERM.\n");
}

void describe(QCommandLineParser &parser, const Options &known)
{
    parser.setApplicationDescription(
        QStringLiteral("Renders the frames of a scenery without a window."));
    parser.addOptions({known.preview, known.from, known.to, known.output, known.format,
                       known.quality, known.size, known.fit, known.set, known.threads,
                       known.missing, known.quiet});
    parser.addPositionalArgument(QStringLiteral("SCENERY.zph"),
                                 QStringLiteral("The scenery file."));
}

} // namespace

CommandLineResult readCommandLine(const QStringList &arguments, BatchOptions &options,
                                  QString *text)
{
    const Options known;
    QCommandLineParser parser;
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    describe(parser, known);
    const bool parsed = parser.parse(arguments);
    if (parsed && (parser.isSet(help) || parser.isSet(QStringLiteral("help-all")))) {
        *text = helpText(parser);
        return CommandLineResult::Help;
    }
    if (parsed && parser.isSet(version)) {
        *text =
            QStringLiteral("zephrant-render %1\n").arg(QLatin1String(ZEPHRANT_VERSION));
        return CommandLineResult::Version;
    }
    if (!parsed) {
        *text = complaintOf(parser);
        return CommandLineResult::Wrong;
    }
    options.preview = parser.isSet(known.preview);
    options.missing = parser.isSet(known.missing);
    options.quiet = parser.isSet(known.quiet);
    const Reader read(parser, options, text);
    const bool good =
        read.number(known.from, 0, MaxFrame, options.from) &&
        read.number(known.to, 0, MaxFrame, options.to) && read.range() &&
        read.output(known.output) &&
        read.number(known.quality, 0, MaxQuality, options.quality) &&
        read.formats(known.format) && read.size(known.size, MinSide, options.size) &&
        read.size(known.fit, 1, options.within) && read.oneSize() &&
        read.settings(known.set) &&
        read.number(known.threads, 1, MaxThreads, options.threads) && read.scenery();
    return good ? CommandLineResult::Run : CommandLineResult::Wrong;
}
