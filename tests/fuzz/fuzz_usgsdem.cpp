#include "importers/demdatarows.h"
#include "importers/usgsdemimport.h"

#include <QBuffer>

#include <cstdint>

namespace {

class Answers : public UsgsDemQuestions {
public:
    bool confirmHeader(UsgsDemData &) override { return true; }
    bool continueChecking(const SuspiciousElevation &) override { return true; }
};

// No larger than what a fuzzer can fill many times a second.
ElevationImage smallImage(const UsgsDemMosaic &mosaic)
{
    const double columns = (mosaic.maxEasting - mosaic.minEasting) / mosaic.resolutionX;
    const double rows = (mosaic.maxNorthing - mosaic.minNorthing) / mosaic.resolutionY;
    return columns * rows < 1e6 ? mosaic.makeImage() : ElevationImage();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QBuffer in;
    in.setData(reinterpret_cast<const char *>(data), int(size));
    if (!in.open(QIODevice::ReadOnly))
        return 0;
    Answers answers;
    UsgsDemImport import(-9999, answers);
    UsgsDemData header;
    header.read(in);
    (void)demDataRows(header);
    UsgsDemMosaic mosaic;
    mosaic.includeCorners(header);
    mosaic.includeResolution(header);
    import.setMosaic(mosaic);
    ElevationImage image = smallImage(mosaic);
    NoProgress unwatched;
    (void)import.readProfiles(in, header, image, unwatched);
    return 0;
}
