#pragma once

#include "faults/operation.h"

#include <functional>
#include <memory>
#include <vector>

/// An operation and how it comes about.
struct OperationEntry {
    QString name;
    std::function<std::unique_ptr<Operation>()> make;
};

/// All operations, in their order. A new one is added to the group that it belongs to.
[[nodiscard]] std::vector<OperationEntry> allOperations();

// The groups.
[[nodiscard]] std::vector<OperationEntry> documentOperations();
[[nodiscard]] std::vector<OperationEntry> runOperations();
[[nodiscard]] std::vector<OperationEntry> importOperations();

/// One that makes every mistake, to see that the proof finds them.
[[nodiscard]] OperationEntry carelessOperation();
