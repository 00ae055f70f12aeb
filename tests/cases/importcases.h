#pragma once

#include <QString>

class CaseFile;

/// Runs a case of an importer or of the triangulation and tells how its result differs
/// from what is expected, empty if it does not. Null for a tool that is none of them.
[[nodiscard]] QString (*importCase(const QString &tool))(const CaseFile &);
