#pragma once

#include <QDialog>

#include <memory>

class Ui_AboutZephrantDialog;

/// Shows the program's name and version.
class AboutZephrantDialog : public QDialog {
    Q_OBJECT

public:
    explicit AboutZephrantDialog(QWidget *parent = nullptr);
    ~AboutZephrantDialog() override;

private:
    std::unique_ptr<Ui_AboutZephrantDialog> ui;
};
