#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QByteArrayList>

#include <array>
#include <optional>

class QIODevice;

/// The lines of a small text file one by one, and the sentences on what is wrong in them.
class ColourLines {
public:
    ColourLines(QIODevice &device, QString name)
        : m_device(device), m_name(std::move(name))
    {
    }

    /// The next line without its end; nothing behind the last, or where a line is too
    /// long for a file of colours.
    [[nodiscard]] std::optional<QByteArray> next();
    /// Whether the reading ended for a line that was too long or could not be read.
    [[nodiscard]] Result<void> ended() const;

    /// `Line 3 of "NAME": WHAT`
    [[nodiscard]] tl::unexpected<Failure> wrong(const QString &what) const;
    [[nodiscard]] tl::unexpected<Failure> noColour(const QByteArray &text) const;
    [[nodiscard]] tl::unexpected<Failure> noHeight(const QByteArray &text) const;

private:
    QIODevice &m_device;
    QString m_name;
    int m_line = 0;
    bool m_isTooLong = false;
};

/// The parts of a line between separators; several separators count as one.
[[nodiscard]] QByteArrayList partsOf(const QByteArray &line, const char *separators);

/// A finite number, with a point in every locale.
[[nodiscard]] std::optional<double> numberOf(const QByteArray &text);

/// A channel of a colour, 0 to 255, digits behind the point cut.
[[nodiscard]] std::optional<int> channelOf(const QByteArray &text);

/// Three channels that stand side by side from `first` on.
[[nodiscard]] std::optional<std::array<int, 3>> channelsOf(const QByteArrayList &parts,
                                                           int first);
