#pragma once

#include "floors/house.h"

/// Folders of the sources that the plan lacks, names of the plan that are no folder or
/// stand twice.
[[nodiscard]] QStringList strangers(const Plan &plan, const Sources &sources);

/// Includes and links that run up or sideways.
[[nodiscard]] QStringList wrongArrows(const Plan &plan, const Links &links,
                                      const Sources &sources);

/// Includes of a folder that is not linked directly, or is linked privately and stands in
/// a header; quoted names that tell no folder.
[[nodiscard]] QStringList unlinkedIncludes(const Links &links, const Sources &sources);

/// Folders and modules of the toolkit that are linked and not included.
[[nodiscard]] QStringList unusedLinks(const Plan &plan, const Links &links,
                                      const Sources &sources);

/// Folders that include, or get by all that they link, more of the toolkit than the plan
/// gives them, or need less.
[[nodiscard]] QStringList toolkitFaults(const Plan &plan, const Links &links,
                                        const Sources &sources);

/// Headers that no file but themselves includes; `outside` are further files that may.
[[nodiscard]] QStringList lonelyHeaders(const Sources &sources, const Sources &outside);
