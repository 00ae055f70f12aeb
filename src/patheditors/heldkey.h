#pragma once

#include <QSet>
#include <QtGlobal>

class QKeyEvent;

/// Whether a key is held, as the key events of a window tell.
///
/// A release is named by what the key would type at that moment: with Shift gone first,
/// the key of "+" may come up as "=". It is known by its place on the keyboard, or,
/// where the window system tells none, as a character whose press nobody has seen.
class HeldKey {
public:
    explicit HeldKey(Qt::Key key) : m_key(key) {}

    explicit operator bool() const { return m_isHeld; }
    void press(const QKeyEvent &event);
    /// True where it is this key that comes up.
    bool release(const QKeyEvent &event);
    /// Its release will not come to the window, or does not count any more.
    void letGo();

private:
    Qt::Key m_key;
    bool m_isHeld = false;
    quint32 m_place = 0; // of the key that is held, 0 where there is none
    QSet<int> m_others;  // keys pressed as something else
};
