#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "run/framescale.h"

#include <QImage>
#include <QString>

#include <atomic>
#include <memory>

class ElevationImage;
class FrameWriter;
class RunListener;
class TerrainSweep;
class TextureImage;
struct FrameCamera;
struct FrameSetup;
struct SceneryDocument;

/// What a run needs to know beside the scenery.
struct RunOptions {
    bool preview = false; ///< half the size, a quarter of the mesh
    bool shown = false;   ///< a window keeps a copy of the frame
    int threads = 0;      ///< that draw a frame; 0 stands for all cores
    QString folder;       ///< of the scenery file, where inputs are also looked for
    QSize within = {};    ///< frames fit into it; of the scenery's own size where empty
};

/// A series of numbered picture files from a scenery, on the thread that calls run().
///
/// Borrows the document, which its owner may change while a listener is called: names,
/// formats, the range of frames and all that the camera depends on hold as they are then.
class FlightRun : private Progress {
public:
    FlightRun(const SceneryDocument &document, RunOptions options, RunListener &listener);
    ~FlightRun() override;
    FlightRun(const FlightRun &) = delete;
    FlightRun &operator=(const FlightRun &) = delete;

    /// Draws and writes all frames. Stopped, it has written those that were whole.
    [[nodiscard]] Result<void> run();
    /// Asks the run to end: the frame in hand is not written. From any thread.
    void stop() { m_stopped = true; }
    /// What is drawn of the frame in hand; null before the first one. For listeners.
    [[nodiscard]] QImage picture();

private:
    [[nodiscard]] Result<void> setUpAndFly();
    [[nodiscard]] Result<void> makeTarget();
    void makeWriter();
    /// What all frames have in common, but for texture and view.
    [[nodiscard]] FrameSetup setupOf(const ElevationImage &elevation) const;
    [[nodiscard]] Result<void> fly(const FrameSetup &setup);
    /// False if the run was stopped in it.
    [[nodiscard]] bool drawFrame(FrameSetup setup, const FrameCamera &camera, int frame);
    /// A row of the mesh begins.
    [[nodiscard]] bool step(qint64 row, qint64 of) override;

    const SceneryDocument &m_document;
    const RunOptions m_options;
    RunListener &m_listener;
    const FrameScale m_scale;
    std::atomic<bool> m_stopped = false;
    std::unique_ptr<TerrainSweep> m_sweep;
    std::unique_ptr<TextureImage> m_target;
    std::unique_ptr<FrameWriter> m_writer;
};
