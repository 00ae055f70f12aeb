#pragma once

#include "views/operationoutcome.h"

/// What an operation has noted for its report, as "Voids 3, Points used 1 of 2".
inline QString factsOf(const OperationOutcome &outcome)
{
    QStringList facts;
    for (const OperationOutcome::Fact &fact : outcome.facts)
        facts << fact.name + QLatin1Char(' ') + fact.value;
    return facts.join(QStringLiteral(", "));
}
