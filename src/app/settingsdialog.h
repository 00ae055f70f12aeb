#pragma once

#include <QDialog>

#include <memory>

class Ui_SettingsDialog;

/// Edits the preferences for refreshing the picture of a render run. They act from
/// the next run on.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget *parent = nullptr);
    ~SettingsDialog() override;

public slots:
    void accept() override;

private:
    std::unique_ptr<Ui_SettingsDialog> ui;
};
