#pragma once

#include <QImageIOPlugin>
#include <QStringList>

/// Makes QTgaHandler known to the program's image reading and writing. Linked
/// in statically and registered by a static initialiser.
class QTgaPlugin : public QImageIOPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "tga.json")

public:
    [[nodiscard]] QStringList keys() const;
    [[nodiscard]] Capabilities capabilities(QIODevice *device,
                                            const QByteArray &format) const override;
    [[nodiscard]] QImageIOHandler *create(QIODevice *device,
                                          const QByteArray &format = {}) const override;
};
