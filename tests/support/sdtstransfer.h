#pragma once

#include "support/isofile.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A raster transfer, made module by module: each function gives the bytes of a file.
namespace sdts {

/// Module name and file name.
using Catalog = std::vector<std::pair<std::string, std::string>>;

/// Names the modules of transfer TR01.
[[nodiscard]] Catalog usualCatalog();

[[nodiscard]] std::string catalog(const Catalog &modules = usualCatalog());

/// The schema: label, format and unit of the elevations.
[[nodiscard]] std::string schema(const std::string &unit = "METERS",
                                 const std::string &format = "BI16",
                                 const std::string &label = "ELEVATION");

/// Value and definition of a domain, such as "-32767" and "VOID".
using Domain = std::vector<std::pair<std::string, std::string>>;
[[nodiscard]] std::string domain(const Domain &values = {{"-32767", "VOID"},
                                                         {"-32766", "FILL"}});

/// The elevation of a cell, column and row counted from 0.
using Elevation = std::function<int(int column, int row)>;

/// The cells as big-endian numbers, a record a row.
[[nodiscard]] std::string cells(int columns, int rows, const Elevation &elevation,
                                int bytesPerCell = 2, char leaderIdentifier = 'D');

/// All four modules under the names of usualCatalog() and TR01CATD.DDF.
[[nodiscard]] std::map<std::string, std::string> transfer(int columns, int rows,
                                                          const Elevation &elevation);

} // namespace sdts
