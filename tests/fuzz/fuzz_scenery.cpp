#include "scene/extrassection.h"
#include "scene/keyvalue.h"
#include "scene/scenerydocument.h"
#include "scene/sceneryreader.h"
#include "scene/scenerywriter.h"
#include "scene/waypointlevel.h"

#include <QTextStream>

#include <cstdint>
#include <cstdlib>

namespace {

struct Scenery : SceneryDocument {
    // True if every line was accepted.
    bool read(QString text)
    {
        SceneryReader reader(*this);
        QTextStream stream(&text);
        QString line;
        bool isGood = true;
        while (stream.readLineInto(&line) && !line.isEmpty()) {
            compactKey(line);
            const auto taken = reader.readLine(line);
            if (taken)
                continue;
            isGood = false;
            if (taken.error().text.isEmpty())
                std::abort(); // a failure that the user is not told
        }
        ExtrasReader extrasReader(extras);
        while (stream.readLineInto(&line))
            extrasReader.readLine(line);
        const auto count = static_cast<int>(controlPoints.size());
        (void)normalizeWaypoints(waypoints, count);
        return isGood;
    }

    QString written() const
    {
        QString text;
        QTextStream stream(&text);
        writeScenery(stream, *this);
        return text;
    }
};

} // namespace

// A scenery file; what was read of it is written and must be readable again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Scenery first;
    (void)first.read(
        QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
    // A list of many records makes a file that takes long to write.
    if (first.waypoints.size() + first.controlPoints.size() > 1000)
        return 0;
    Scenery second;
    if (!second.read(first.written()))
        std::abort();
    // Extras read back as they were written; so do told values, once they are rounded.
    Scenery third;
    if (!third.read(second.written()) || third.written() != second.written() ||
        !(third.extras == second.extras))
        std::abort();
    return 0;
}
