#pragma once

class QTextStream;
struct SceneryDocument;

/// Writes a scenery file, reals with six significant digits.
void writeScenery(QTextStream &stream, const SceneryDocument &document);
