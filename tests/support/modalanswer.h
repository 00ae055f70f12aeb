#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QDialog;
class QWidget;

/// Answers the modal windows that the code under test opens, as a user would.
///
/// Announce the answers in their order, then run the code; each answer waits for
/// the next modal window and acts on it once it is shown. Windows that nobody
/// announced are closed and count as complaints, so that no test hangs.
///
///     ModalAnswers answers;
///     answers.chooseFile("Open File", path);
///     answers.pressButton("Error", "Cannot save \"x\".", QMessageBox::Ok);
///     QTest::mouseClick(button, Qt::LeftButton);
///     QCOMPARE(answers.complaints(), QStringList());
///
/// complaints() also names what was announced and never opened.
class ModalAnswers {
public:
    /// `known`: a modal window that stands open already and is nobody's to answer.
    explicit ModalAnswers(const QWidget *known = nullptr);
    ~ModalAnswers();

    /// Expects a message box with this title and text; presses a button.
    void pressButton(const QString &title, const QString &text,
                     QMessageBox::StandardButton button);
    /// Expects a file dialog with this caption; picks a file and accepts. An empty
    /// `nameFilter` leaves the filter as the program set it.
    void chooseFile(const QString &caption, const QString &path,
                    const QString &nameFilter = {});
    /// The same for an open dialog that takes several files of one folder.
    void chooseFiles(const QString &caption, const QStringList &paths);
    /// Expects a file dialog with this caption; cancels it.
    void cancelFile(const QString &caption);
    /// Expects any other dialog; does with it as told. The function must close it.
    void withDialog(const std::function<void(QDialog *dialog)> &act);

    /// What went otherwise than announced; empty after a good run.
    [[nodiscard]] QStringList complaints() const;

private:
    class Watcher;
    std::unique_ptr<Watcher> m_watcher;
};
