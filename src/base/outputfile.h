#pragma once

#include <QFile>
#include <QString>

/// A file that is written from its beginning to its end and knows whether all of it
/// arrived.
///
/// The toolkit's file forgets a write that failed or fell short once another succeeds,
/// and those who write pictures do not all look at every result. To be opened without a
/// buffer, or it writes, and fails, where nobody can see it: a look at its size is
/// enough.
class OutputFile : public QFile {
public:
    using QFile::QFile;

    /// Brings all that was written to the disk. False if that, or any write before it,
    /// has failed.
    [[nodiscard]] bool finish();
    /// Whether a write has failed so far.
    [[nodiscard]] bool hasFailed() const { return m_failed; }
    /// What the system said of the first failure, without a full stop.
    [[nodiscard]] QString reason() const { return m_reason; }

protected:
    qint64 writeData(const char *data, qint64 length) override;

private:
    void fail(int systemError);

    bool m_failed = false;
    QString m_reason;
};

/// Waits until the disk has what was written to a descriptor. False with errno if it
/// cannot take it; what has no disk behind it, such as a pipe, is content.
[[nodiscard]] bool syncToDisk(int descriptor);
