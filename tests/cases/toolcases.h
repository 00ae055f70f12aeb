#pragma once

#include <QString>

class CaseFile;

/// The same for the tools, see importcases.h.
[[nodiscard]] QString (*toolCase(const QString &tool))(const CaseFile &);
