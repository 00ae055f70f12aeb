#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

/// How long a NetCDF file of the classic kinds ("CDF") has to be at least for all the
/// variables that its head tells of; `head` is its beginning. Nothing where that is no
/// such head or goes on beyond what is given. Variables that grow with the records count
/// for nothing. After the NetCDF Classic Format Specification, versions 1, 2 and 5.
[[nodiscard]] std::optional<qint64> lengthOfNetCdf(const QByteArray &head);
