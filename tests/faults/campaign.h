#pragma once

#include "faults/operations.h"

#include <QMap>
#include <QStringList>

#include <limits>

/// How many of a kind are made to fail: so many from the first on, and as many more
/// spread over the rest.
struct CampaignOptions {
    long files = std::numeric_limits<int>::max(); // writes, flushes, renames: all
    long allocations = 1000;
};

/// What a campaign over one operation found.
struct CampaignResult {
    QString table;        // a line for each kind of fault
    QStringList failures; // what must not be
    // Where libraries do not bear a lack of memory, and how often the program ended
    // there.
    QMap<QString, int> endsInLibraries;
};

/// Makes the n-th write, flush, rename and allocation of an operation fail, for every n,
/// and looks at the folder after each: every target must be as it was before or as the
/// operation leaves it when all goes well, the user must have been told of what was not
/// written, and nothing else may be there.
[[nodiscard]] CampaignResult runCampaign(const OperationEntry &entry,
                                         const CampaignOptions &options);

/// One fault of an operation, for a closer look at it.
[[nodiscard]] CampaignResult runOne(const OperationEntry &entry, const Fault &fault);
