#pragma once

#include "scene/scenerydocument.h"

#include <QFile>
#include <QList>
#include <QStringList>

#include <functional>
#include <memory>

class FlightRun;
class ImageMdiChild;
class RunWindow;
class SceneryMdiChild;
struct SceneryReading;
class SetFlightPathDialog;
class UserNotices;

/// The object of one open scenery document.
///
/// It is the scenery file, and the face under which document, form, runs and flight path
/// editors are one: it moves values between the form and the document, lets runs fly what
/// the form shows, and opens the editors on copies of the lists.
class SceneryDelegate : public QFile {
    Q_OBJECT

public:
    /// `view` is the owning form, parent of message boxes.
    explicit SceneryDelegate(SceneryMdiChild *view);
    ~SceneryDelegate() override;

    // --- The scenery file -------------------------------------------------
    using QFile::open;
    /// Loads a file into parameters, lists and form. False if it cannot be opened
    /// or holds a line that is not accepted; errorString() has the last complaint.
    bool open(const QString &fileName);
    /// Writes what the form shows. False with errorString() if that fails; an
    /// earlier file is then left as it was.
    bool save();
    bool save(const QString &fileName);
    /// Accepts one compacted line; false with errorString() if no key fits.
    bool processLineLoad(const QString &line);
    /// Removes blanks and tabs from the key side of a line.
    static void compactLine(QString &line);

    // 0: the line is not this key; 1: read; 2: broken, errorString() is set.
    int readValueFromKey(const QString &line, const QString &key, QString &value);
    int readValueFromKey(const QString &line, const QString &key, QRgb &colour);
    int readValueFromKey(const QString &line, const QString &key, bool &value);
    int readValueFromKey(const QString &line, const QString &key, int &value);
    int readValueFromKey(const QString &line, const QString &key, int &value1,
                         int &value2);
    int readValueFromKey(const QString &line, const QString &key, int &value1,
                         int &value2, int &value3);
    int readValueFromKey(const QString &line, const QString &key, double &value);

    /// The file to read for a texture or elevation name: the name itself, or, if it
    /// is relative and not found from the current folder, the one beside the
    /// scenery file.
    [[nodiscard]] QString inputFile(const QString &name) const;
    /// The folder of the scenery file; empty while there is none.
    [[nodiscard]] QString folder() const;

    [[nodiscard]] bool isModified() const { return modified; }
    void setModified(bool isModified);
    [[nodiscard]] SceneryData &sceneryData() { return scenery.parameters; }
    [[nodiscard]] const SceneryData &sceneryData() const { return scenery.parameters; }
    /// The document as it is, without what the form shows and was not taken yet.
    [[nodiscard]] const SceneryDocument &document() const { return scenery; }
    /// The document with what the form shows, which is taken into the document by that.
    [[nodiscard]] SceneryDocument shown();
    /// The same, but the document stays as it is.
    [[nodiscard]] SceneryDocument seen() const;
    /// Changes what the form shows as a user does; the document takes it as it takes what
    /// is typed.
    void editForm(const std::function<void(SceneryData &)> &edit);
    /// Adds a control point at the end of the path, of that in the open editors if they
    /// are.
    void addControlPoint(int x, int y, int z);
    /// Whether a run is on.
    [[nodiscard]] bool isRunning() const { return runInHand != nullptr; }
    /// Whether the path in the open editors is another one than the document's.
    [[nodiscard]] bool pathEditorHoldsChanges() const;
    /// Gives the document the path of another one, and makes it fly on it. Open editors
    /// go on with it.
    void takePath(const SceneryDocument &flown);
    [[nodiscard]] const SceneryExtras &extras() const { return scenery.extras; }
    /// Changes extras as a user does: the document counts as modified where they differ.
    void setExtras(const SceneryExtras &extras);
    /// A sentence for each line of the extras that the last reading did not understand or
    /// had to limit; they are kept and are no failure.
    [[nodiscard]] const QStringList &extrasTold() const { return toldOfExtras; }
    /// Where messages go; message boxes by default. Borrowed.
    void setNotices(UserNotices *other);

    // --- Runs ---------------------------------------------------------------
    /// A full run shown in `view`, which may be null for a run without a window.
    /// False means failed, with the reason in errorString(); stopped is true.
    bool renderFinal(ImageMdiChild *view);
    /// Whether the notices have told already why the last run failed.
    [[nodiscard]] bool toldFailure() const { return failureTold; }
    /// The same at half size on a quarter of the mesh.
    bool renderPreview(ImageMdiChild *view);
    void stopRendering();
    /// Shows the frame under construction, if there is one.
    void refresh();
    /// Frames for which this is false are passed over; none are by default.
    void setFrameFilter(std::function<bool(int frame)> wanted);
    /// Threads that draw a frame; 0, the default, stands for all cores.
    void setThreads(int count) { threads = count; }
    /// Whether the frame filter lets a frame through.
    [[nodiscard]] bool frameIsWanted(int frame) const;
    /// Tells why the flight of a run cannot be flown.
    void tellRefusedFlight(const QString &reason);
    /// The names of a frame's files, in the order in which they are written.
    [[nodiscard]] QStringList frameFiles(int frame) const;
    static double GetSmoothedValue(double t, double first, double last, double inertia);

public slots:
    void dataToView();
    void viewToData();
    void setModified();
    void fixScale();
    void repositionSceneryFrom();
    void repositionSceneryTo();
    void browseTextureFile();
    void browseElevationFile();
    void browseOutputFiles();
    void selectColor();
    void copyFirstLast();
    void copyLastFirst();
    void setFlightPath();
    /// Takes what the flight path editors made of their copies.
    void acceptSetFlightPathDialog();

signals:
    /// Something of the document may be another than before.
    void changed();
    /// A run has begun or ended.
    void runningChanged();
    /// The extras are others, by an edit or by a reading.
    void extrasChanged();
    void frameStarted(int frame);
    /// After a frame's files were written; `complaints` has a sentence for each that
    /// could not be, with the reason.
    void frameSaved(int frame, const QStringList &complaints);

private:
    /// Reads what stands under a key; `take` puts it where it belongs, or fails.
    template <class Take>
    int readKey(const QString &line, const QString &key, const Take &take);
    /// Takes what was read into document and form; false if a line was not accepted.
    bool take(const SceneryReading &reading);
    void tellObsoleteFormat(bool selected);
    /// Gives the fields of the form their ranges and decimals.
    void limitFields();
    void readForm(SceneryData &data) const;
    void showInForm(SceneryData &data);
    void reposition(bool lastFrame);
    void showPathInEditor();
    bool run(ImageMdiChild *target, bool preview);

    // The run that is on, and what shows it.
    FlightRun *runInHand = nullptr;
    RunWindow *runWindow = nullptr;
    int threads = 0;
    bool failureTold = false;
    std::function<bool(int frame)> frameWanted;

    bool modified = false;
    SceneryMdiChild *view;
    SceneryDocument scenery;
    bool headSeen = false;
    QStringList toldOfExtras;
    // What the flight path editors work on, and the first of them. It refers to the
    // copies, so it goes before them.
    QList<ControlPoint> dialogControlPoints;
    QList<Waypoint> dialogWaypoints;
    int dialogWaypointLevel = 0;
    std::unique_ptr<SetFlightPathDialog> setFlightPathDialog;
    UserNotices *notices;
};
