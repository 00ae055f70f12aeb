#pragma once

#include <optional>

class QString;

/// The metres that one step of an elevation picture stands for, from the item
/// MetresPerHeightUnit of the sidecar NAME.aux.xml; no value where that does not tell a
/// number above 0.
[[nodiscard]] std::optional<double> metresPerHeightUnit(const QString &pictureFile);
