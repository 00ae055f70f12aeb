#pragma once

class QTextStream;
struct SceneryDocument;

/// Writes a scenery file, told reals with six significant digits, extras behind them.
void writeScenery(QTextStream &stream, const SceneryDocument &document);
