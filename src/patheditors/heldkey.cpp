#include "patheditors/heldkey.h"

#include <QKeyEvent>

void HeldKey::press(const QKeyEvent &event)
{
    if (event.key() == m_key) {
        m_isHeld = true;
        m_place = event.nativeScanCode();
    } else if (!event.isAutoRepeat()) {
        m_others.insert(event.key());
    }
}

bool HeldKey::release(const QKeyEvent &event)
{
    // A key that repeats itself is still held.
    if (event.isAutoRepeat())
        return false;
    const bool isOther = m_others.remove(event.key());
    bool isThis = event.key() == m_key;
    if (!isThis && m_isHeld && m_place != 0)
        isThis = event.nativeScanCode() == m_place;
    else if (!isThis && m_isHeld)
        isThis = !isOther && event.key() < Qt::Key_Escape; // all characters are below
    if (isThis)
        letGo();
    return isThis;
}

void HeldKey::letGo()
{
    m_isHeld = false;
    m_place = 0;
    m_others.clear();
}
