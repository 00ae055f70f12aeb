#pragma once

#include <QElapsedTimer>
#include <QMessageBox>

#include <memory>

/// Tells that memory has run out, in a box that is made beforehand and needs little.
///
/// Some memory is held in reserve and let go while the box is open.
class MemoryNotice {
public:
    MemoryNotice();

    /// Opens the box and returns at once; while it is open already nothing happens.
    void tell();
    /// The same for work that comes again by itself, such as painting: not as long as
    /// the user has only just read it.
    void tellNowAndThen();

private:
    void holdReserve();

    QMessageBox m_box;
    std::unique_ptr<char[]> m_reserve;
    QElapsedTimer m_sinceRead;
};
