#pragma once

#include <QString>

/// Bytes that one picture may claim: half of the memory that the machine, the limits of
/// the process or its control group give, and never more than can be had just now; but
/// always as much as ordinary pictures need.
///
/// The system grants more memory than it has and ends who then uses it, so whoever is
/// about to make a large picture asks here first. The environment variable
/// ZEPHRANT_MEMORY_BUDGET (bytes) takes the place of all this.
[[nodiscard]] qint64 memoryBudget();

/// Whether a claim keeps to the budget.
[[nodiscard]] bool fitsMemory(qint64 bytes);

/// An amount of memory as people write it, such as "14.4 GB"; 1 GB is 10^9 bytes.
[[nodiscard]] QString memoryText(qint64 bytes);

/// Whether something may be made that takes so much memory. Where it may not, a notice
/// tells: "WHAT would take 14.4 GB of memory; the budget is 8.2 GB."
[[nodiscard]] bool claimMemory(const QString &what, qint64 bytes);
