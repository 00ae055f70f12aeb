#include "app/memorynotice.h"

#include <QCoreApplication>

#include <cstdio>
#include <new>

namespace {

constexpr std::size_t ReserveBytes = std::size_t(8) << 20; // a box and much besides
constexpr qint64 Pause = 10000;                            // ms

} // namespace

MemoryNotice::MemoryNotice()
{
    m_box.setIcon(QMessageBox::Critical);
    m_box.setWindowTitle(QCoreApplication::translate("MemoryNotice", "Error"));
    m_box.setText(QCoreApplication::translate(
        "MemoryNotice",
        "There is not enough memory for this. It was given up, and the program goes on.\n"
        "Save your work, and close windows that you do not need."));
    m_box.setStandardButtons(QMessageBox::Ok);
    m_box.setModal(true);
    m_box.ensurePolished();
    QObject::connect(&m_box, &QMessageBox::finished, &m_box, [this] {
        m_sinceRead.start();
        holdReserve();
    });
    holdReserve();
}

void MemoryNotice::holdReserve()
{
    if (!m_reserve)
        m_reserve.reset(new (std::nothrow) char[ReserveBytes]);
}

void MemoryNotice::tell()
{
    m_reserve.reset();
    try {
        if (!m_box.isVisible()) {
            m_box.show();
            m_box.raise();
            m_box.activateWindow();
        }
    } catch (const std::bad_alloc &) {
        std::fputs("zephrant: not enough memory\n", stderr);
    }
}

void MemoryNotice::tellNowAndThen()
{
    if (!m_sinceRead.isValid() || m_sinceRead.hasExpired(Pause))
        tell();
}
