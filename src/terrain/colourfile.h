#pragma once

#include "base/result.h"
#include "terrain/colourramp.h"

class QIODevice;

/// Reads a file of colours: a palette of the Generic Mapping Tools where its name ends in
/// `.cpt` or it tells a colour model, else a colour text as `gdaldem color-relief` has
/// it. A failure names the file and the line.
[[nodiscard]] Result<ColourTable> readColourFile(const QString &file);

/// The colour text of gdaldem: a line is a height, a share as "20%" or "nv" for voids,
/// then red, green and blue or a name, then perhaps alpha, which is not used; separated
/// by blanks, tabs, commas or colons. Lines that begin with # or / are comments.
[[nodiscard]] Result<ColourTable> readColourText(QIODevice &device, const QString &name);

/// A palette of the Generic Mapping Tools: lines of two heights and their colours, as
/// three numbers, r/g/b, h-s-v, c/m/y/k, a gray, #rrggbb or a name. Heights are metres;
/// those of a palette with a RANGE that run from 0 or -1 to 1 are spread over that range.
/// The lines B and F are read, but what lies beyond the palette has the colour of its
/// end, as gdaldem has it; N is the colour of voids.
[[nodiscard]] Result<ColourTable> readCpt(QIODevice &device, const QString &name);
