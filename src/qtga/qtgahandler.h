#pragma once

#include <QImageIOHandler>

/// Reads and writes TGA pictures of the one kind that the program uses:
/// uncompressed true colour, 24 bits a pixel, written with top-left origin.
///
/// Data of other depths are read with the file's own line length and walked in
/// steps of three bytes all the same.
class QTgaHandler : public QImageIOHandler {
public:
    [[nodiscard]] bool canRead() const override;
    /// True for every readable device: the content is not looked at.
    [[nodiscard]] static bool canRead(const QIODevice *device);
    /// False for a head that is short or of another kind, and for missing data;
    /// `image` then stays as it was.
    bool read(QImage *image) override;
    bool write(const QImage &image) override;
    [[nodiscard]] QByteArray name() const;
    /// Size is a constant, whatever the file; no caller may rely on it.
    [[nodiscard]] QVariant option(ImageOption option) const override;
    void setOption(ImageOption option, const QVariant &value) override;
    [[nodiscard]] bool supportsOption(ImageOption option) const override;

private:
    qint32 compression = 0; // stored, used by nothing
};
