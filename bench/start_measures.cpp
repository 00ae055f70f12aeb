// What the start of the batch program costs beside that of the least program on the
// toolkit's pictures. They are started in turn, so that both see the same machine; of
// each the least processor time and memory is told:
//
//     build/release/bench/start_measures [starts of each, 30 if nothing is said]
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/// A command line and what its starts have cost at the least.
struct Start {
    const char *name;
    std::vector<QByteArray> words;
    double milliseconds = 1e9; // of the processor
    double megabytes = 1e9;    // resident
};

double millisecondsOf(const timeval &time)
{
    return 1e3 * double(time.tv_sec) + 1e-3 * double(time.tv_usec);
}

[[noreturn]] void become(const Start &start)
{
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    std::vector<char *> words;
    for (const QByteArray &word : start.words)
        words.push_back(const_cast<char *>(word.constData()));
    words.push_back(nullptr);
    execv(words.front(), words.data());
    _exit(127);
}

bool measure(Start &start)
{
    const pid_t child = fork();
    if (child == 0)
        become(start);
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        std::fprintf(stderr, "%s failed\n", start.words.front().constData());
        return false;
    }
    start.milliseconds = std::min(start.milliseconds, millisecondsOf(usage.ru_utime) +
                                                          millisecondsOf(usage.ru_stime));
    start.megabytes = std::min(start.megabytes, double(usage.ru_maxrss) / 1024.0);
    return true;
}

// The smallest run that there is: a frame of a few pixels. Its picture is the scenery's
// only input.
bool writeSmallestScenery(const QString &folder)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::black);
    QFile file(folder + "/s.zph");
    if (!image.save(folder + "/p.png") || !file.open(QIODevice::WriteOnly))
        return false;
    file.write("[Param]\nAusBreite=8\nAusHoehe=8\nAusAuflX=2\nAusAuflY=2\nAusgabePPM=1\n"
               "HDateiname=p.png\nTDateiname=p.png\nAusDateiname=" +
               folder.toLocal8Bit() + "/f%d\n");
    return file.flush();
}

} // namespace

int main(int argc, char **argv)
{
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 30;
    const QTemporaryDir made;
    const QByteArray folder = made.path().toLocal8Bit();
    if (!writeSmallestScenery(made.path()))
        return 1;
    Start starts[]{
        {"least program on Qt Gui", {LEAST_PROGRAM}},
        {"zephrant-render --version", {RENDER_PROGRAM, "--version"}},
        {"least that copies a picture",
         {LEAST_PROGRAM, folder + "/p.png", folder + "/c.ppm"}},
        {"one frame of 8 by 8 pixels", {RENDER_PROGRAM, "--quiet", folder + "/s.zph"}}};
    for (int round = 0; round < rounds; ++round)
        for (Start &start : starts)
            if (!measure(start))
                return 1;
    // Each second one is compared with the one ahead of it.
    for (std::size_t i = 0; i < std::size(starts); ++i) {
        const Start &start = starts[i];
        const Start &least = starts[i / 2 * 2];
        std::printf("%-28s %6.1f ms  %5.2f   %5.1f MB  %+5.1f\n", start.name,
                    start.milliseconds, start.milliseconds / least.milliseconds,
                    start.megabytes, start.megabytes - least.megabytes);
    }
    return 0;
}
