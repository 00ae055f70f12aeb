#pragma once

#include "importers/asciimesh.h"
#include "views/converterdialog.h"

class QFile;
class QLineEdit;
class QListWidget;
class QSpinBox;

/// What the imports of regular and of irregular text meshes share: the input is
/// scanned for its boundaries when it is chosen, and problems go to a list.
class AsciiMeshDialog : public ConverterDialog {
    Q_OBJECT

public:
    /// Converts, and closes whatever came of it.
    void accept() override;

protected:
    explicit AsciiMeshDialog(const QString &messageTitle, QWidget *parent);
    /// Finds the widgets of either form.
    void setUpForm();

    /// Widens the boundaries by the points of the file and lists warnings.
    void scanFile(const QString &fileName);
    /// Shows the boundaries, during the scan and after it.
    virtual void showBoundaries();
    /// The rows for the results list after a scan.
    [[nodiscard]] virtual QStringList scanRows(const MeshScan &scan) const;
    /// Reads the input file again and writes the output; false if it was not
    /// written. What went wrong is shown.
    virtual bool asciiToImage() = 0;

    /// Opens the input for the conversion and empties the results list; shows a
    /// failure.
    [[nodiscard]] bool openInput(QFile &file);
    void showRows(const QStringList &rows);

    [[nodiscard]] const MeshBoundaries &boundaries() const { return m_boundaries; }

private:
    // Those that both forms have.
    struct MeshWidgets {
        QLineEdit *fromFile;
        QLineEdit *top;
        QLineEdit *bottom;
        QLineEdit *left;
        QLineEdit *right;
        QSpinBox *skip;
        QListWidget *results;
    };

    MeshWidgets m_widgets{};
    MeshBoundaries m_boundaries; // of all files chosen since the dialog was opened
    MeshBoundaries m_shown;
};
