#pragma once

#include <QImageIOHandler>
#include <QSemaphore>

/// A picture format, "held", whose writer waits until a test lets it go on: what else
/// happens meanwhile does not depend on how fast a picture is encoded. A file of it holds
/// the colour of the first pixel as a text.
class HeldFormat : public QImageIOPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid)

public:
    /// Writers that have begun, and those that may end. Count for the whole program.
    static QSemaphore begun;
    static QSemaphore mayEnd;

    [[nodiscard]] Capabilities capabilities(QIODevice *device,
                                            const QByteArray &format) const override;
    [[nodiscard]] QImageIOHandler *create(QIODevice *device,
                                          const QByteArray &format) const override;
};
