#pragma once

#include <QDialog>
#include <QSize>

#include <memory>

class Ui_NewFileDialog;

/// Asks whether a new document is a scenery or an image, and of which size.
class NewFileDialog : public QDialog {
    Q_OBJECT

public:
    explicit NewFileDialog(QWidget *parent = nullptr);
    ~NewFileDialog() override;

    [[nodiscard]] bool createImageFile() const;
    /// Width and height as typed; what is no number is 0.
    [[nodiscard]] QSize imageFileSize() const;

public slots:
    void radioButtonImageClicked();
    void radioButtonSceneryClicked();

private:
    void enableSize(bool enable);

    std::unique_ptr<Ui_NewFileDialog> ui;
};
