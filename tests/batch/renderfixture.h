#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class QProcess;

/// What a run of the program came to.
struct Outcome {
    int status = -1;
    QString out;
    QString err;
};

/// Drives zephrant-render over a scenery of three small frames, in a folder of its own.
class RenderFixture {
protected:
    static constexpr int Patience = 60000; // ms

    /// Makes texture t.png, elevation e.png and the scenery s.zph, whose frames are f04
    /// to f06 in PNG, 40 by 30 pixels.
    void makeScenery();
    void removeScenery() { m_dir.reset(); }
    /// The scenery with more lines at its end.
    void writeScenery(const QString &more) const;
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
    }
    /// Runs the program; `prepare` may change the process before it is started.
    [[nodiscard]] Outcome
    render(const QStringList &arguments,
           const std::function<void(QProcess &)> &prepare = {}) const;
    /// All files whose names begin as those of frames do.
    [[nodiscard]] QStringList frames() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};
