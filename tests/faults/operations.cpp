#include "faults/operations.h"

std::vector<OperationEntry> allOperations()
{
    std::vector<OperationEntry> all;
    for (auto group : {documentOperations(), runOperations(), importOperations()})
        all.insert(all.end(), group.begin(), group.end());
    return all;
}
