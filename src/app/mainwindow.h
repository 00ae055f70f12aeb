#pragma once

#include "views/workspacewindow.h"

#include <QMainWindow>

#include <array>
#include <memory>

class BackgroundWork;
class ImageMdiChild;
class LiveDock;
class QAction;
class QDialog;
class QDockWidget;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QWidget;
class SceneryMdiChild;
class StatusHints;
class TerrainOpener;
class Ui_MainWindow;
struct LibraryNote;
struct OperationOutcome;
struct OperationReport;
struct RecentFiles;
struct StatusHint;

/// The program's one main window: the menus, the workspace of document windows, the
/// recent files, and the dispatch of a file name to the view that shows it.
class MainWindow : public QMainWindow, public WorkspaceWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    [[nodiscard]] MdiChild *activeMdiChild() const override;
    void showMessage(const QString &text, int timeoutMs) override;
    [[nodiscard]] QAction *getAction_FitToWindow() const override;
    /// Tells a sentence on the right side of the status bar.
    void tellHint(const StatusHint &hint);
    /// Gives the window what reads terrain of any kind; without it a hint tells what is
    /// missing.
    void setTerrainOpener(std::unique_ptr<TerrainOpener> opener);
    /// Takes what an importer or a tool has come to: the report on it is made beside the
    /// window and offered in the status bar.
    void take(const OperationOutcome &outcome);

public slots:
    void newFile();
    void open();
    /// Names that end in ZPH, in any case, open as scenery; all others as image.
    void open(const QString &path);
    /// Opens files that the program was started with or that were dropped on it, each
    /// by the part of the program that its kind is for.
    void openGiven(const QStringList &paths);
    void openMRU1();
    void openMRU2();
    void openMRU3();
    void openMRU4();
    void save();
    void saveAs();
    void copy();
    void paste();
    void copyFirstLast();
    void copyLastFirst();
    void switchLayoutDirection();
    void updateMenus();
    void updateWindowMenu();
    void setActiveSubWindow(QWidget *window);
    void mdiChildDestroyed();
    void testWindowStateChanged(Qt::WindowStates before, Qt::WindowStates after);

    void renderPreview();
    void renderFinal();
    void stopRendering();

    void settings();
    void aboutZephrantDialog();
    void librariesDialog();
    /// Opens the last report on an importer or a tool.
    void showReport();
    // The established names of opening these dialogs; one that comes new needs none.
    void usgsDEMConversionDialog() { openDialog("action_UsgsDEMConversionDialog"); }
    void binConversionDialog() { openDialog("action_BinConversionDialog"); }
    void asciiRegularDialog() { openDialog("action_AsciiRegularDialog"); }
    void asciiIrregularDialog() { openDialog("action_AsciiIrregularDialog"); }
    void sdtsConversionDialog() { openDialog("action_SdtsConversionDialog"); }
    void japanConversionDialog() { openDialog("action_JapanConversionDialog"); }
    void elevationToColorDialog() { openDialog("action_ElevationToColorDialog"); }
    void elevationToGrayDialog() { openDialog("action_ElevationToGrayDialog"); }
    void grayToElevationDialog() { openDialog("action_GrayToElevationDialog"); }
    void changeBlue0PixelsDialog() { openDialog("action_ChangeBlue0PixelsDialog"); }
    void convolutionDialog() { openDialog("action_ConvolutionDialog"); }
    void mergeDialog() { openDialog("action_MergeDialog"); }
    void maskDialog() { openDialog("action_MaskDialog"); }
    void resampleDialog() { openDialog("action_ResampleDialog"); }
    void rectifyDialog() { openDialog("action_RectifyDialog"); }

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void connectDocumentActions();
    void connectViewAndRunActions();
    void connectWindowActions();
    void connectDialogActions();
    /// Makes the menu entries of the importers and tools and connects them.
    void addDialogActions();
    /// Makes a dialog and runs it until the user closes it.
    void runDialog(std::unique_ptr<QDialog> (*make)(QWidget *parent));
    /// Does what choosing the menu entry of this name does.
    void openDialog(const char *object);
    /// Gives hints and the notices of the program their place in the status bar.
    void addHints();
    void addReports();
    void useInScenery(const OperationReport &used);
    void addDocks();
    void addDock(QDockWidget *dock, const QString &action, const QString &text,
                 const QString &help);
    void followScenery();
    void restoreDocks();
    void storeDocks() const;
    void addHeights();
    void watchHeights(ImageMdiChild *view);
    void showHeight(const QString &text);
    void updateHeights();

    struct GivenFiles;
    void askTerrain(const QString &path, qsizetype place,
                    const std::shared_ptr<GivenFiles> &given);
    void answered(const std::shared_ptr<GivenFiles> &given);
    void openTerrain(const QStringList &files);
    void openTrack(const QString &file);
    /// Offers Open Terrain for a file that was refused, if that reads it.
    void offerTerrain(const QString &file);
    /// Tells when the elevation file of a scenery holds other than heights of 24 bits.
    void watchElevationFile(SceneryMdiChild *view);
    void readSettings();
    void writeSettings() const;

    [[nodiscard]] SceneryMdiChild *activeScenery() const;
    [[nodiscard]] QMdiSubWindow *findMdiChild(const QString &file) const;
    ImageMdiChild *createImageView();
    SceneryMdiChild *createSceneryView();
    /// Gives a view its window in the workspace.
    QMdiSubWindow *addToWorkspace(MdiChild *view);
    /// The view's loading; too little memory is told and counts as a failure.
    bool load(MdiChild *view, const QString &path);
    /// Asks about unsaved changes of a file that is open already, and loads it anew.
    void revert(QMdiSubWindow *window, const QString &path);
    void addToMRU(const QString &file);
    void openRecent(int index);
    void showRecent(const RecentFiles &files);
    [[nodiscard]] std::array<QAction *, 4> recentActions() const;
    /// The text of a recent entry is its path; while the menu is open, it is spelled so
    /// that its ampersands show.
    void spellRecent(bool inMenu);

    void updateMenusForImage(ImageMdiChild *view);
    void updateMenusForScenery(const SceneryMdiChild *view);
    void enableZoom(bool enable);
    void enableRun(bool enable);
    void run(SceneryMdiChild *view, void (SceneryMdiChild::*operation)());
    /// Asks whether the view's run is to end; `parent` is the question's window.
    void askToStop(SceneryMdiChild *view, QWidget *parent);
    /// Gives the window that shows a scenery's runs the keys to start and stop them.
    void addRunKeys(SceneryMdiChild *view, ImageMdiChild *picture);

    std::unique_ptr<Ui_MainWindow> ui;
    LiveDock *liveDock = nullptr;
    StatusHints *hints = nullptr;
    QLabel *labelHeight = nullptr; // the height under the mouse
    QAction *actionElevation = nullptr;
    QAction *actionRelief = nullptr;
    QAction *actionReport = nullptr;
    BackgroundWork *reporting = nullptr;
    std::shared_ptr<const OperationReport> report; // the last one
    std::unique_ptr<TerrainOpener> terrain;
    QMdiArea *mdiArea = nullptr;
    QAction *separatorAction = nullptr; // between the Window menu's entries and windows
    quint32 renderDepth = 0; // runs that have been started and have not returned
};
