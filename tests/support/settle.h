#pragma once

#include <QCoreApplication>
#include <QEvent>

/// Lets happen what is due: everything that is posted, and what that posts in its turn.
/// For what must not happen, which a wait of some length may just miss.
inline void settle()
{
    constexpr int Rounds = 10;
    for (int i = 0; i < Rounds; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
