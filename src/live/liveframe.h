#pragma once

#include "live/livelevels.h"
#include "live/livepicture.h"

class ElevationImage;
class InputCache;
class Progress;
class TerrainSweep;
class TextureImage;

/// A white texture of so many pixels; of one, white all around, where they are too many.
[[nodiscard]] std::shared_ptr<TextureImage> whiteTexture(double width, double height,
                                                         QRgb around);

/// The files of a request's elevations and texture as they are found now; empty names
/// where the scenery names none.
struct LiveFiles {
    explicit LiveFiles(const LiveRequest &request);

    QString elevation, texture;
};

/// All that the pictures of one request are drawn from.
///
/// What the final frame looks like is settled by what runs use themselves; the coarser
/// levels differ from it in size, mesh and quality alone.
class LiveFrame {
public:
    /// Reads the files, or finds that something is missing: message() then tells it.
    LiveFrame(const LiveRequest &request, InputCache &inputs);

    [[nodiscard]] bool canBeDrawn() const { return m_elevation && m_flies; }
    [[nodiscard]] const QString &message() const { return m_message; }
    [[nodiscard]] const ViewCamera &camera() const { return m_camera; }
    [[nodiscard]] std::optional<double> groundHeight() const;
    /// Settles the camera of a request that is to fill the picture.
    void settle(TerrainSweep &sweep, int threads, Progress &progress);

    /// Sizes of the full picture and its mesh, for LiveLevels.
    [[nodiscard]] QSize fullSize() const;
    [[nodiscard]] QSize fullMesh() const;
    /// Draws a coarser picture, or the final one where `level` is null; a null image
    /// where `progress` ended it.
    [[nodiscard]] QImage draw(TerrainSweep &sweep, const LiveLevel *level, int threads,
                              Progress &progress) const;

private:
    void findCamera();
    void holdGround();
    /// Moves the camera until nothing but ground is seen, or gives up.
    void fillPicture(TerrainSweep &sweep, int threads, Progress &progress);
    [[nodiscard]] double heightAt(double x, double y) const;
    void findFiles(InputCache &inputs);
    [[nodiscard]] FrameCamera cameraScaled(double factor) const;

    LiveRequest m_request;
    std::shared_ptr<ElevationImage> m_elevation;
    std::shared_ptr<TextureImage> m_texture;
    FrameCamera m_frame; // of a picture as large as the scenery asks for
    ViewCamera m_camera;
    bool m_flies = false;
    QString m_message;
};
