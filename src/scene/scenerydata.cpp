#include "scene/scenerydata.h"

// The base class is not copied: it has no state that belongs to the parameters.
SceneryData::SceneryData() { clear(); }

SceneryData::SceneryData(const SceneryData &other)
    : QObject(), BeobXA(other.BeobXA), BeobXE(other.BeobXE), BeobYA(other.BeobYA),
      BeobYE(other.BeobYE), BeobZA(other.BeobZA), BeobZE(other.BeobZE),
      RichtungA(other.RichtungA), RichtungE(other.RichtungE), NeigungA(other.NeigungA),
      NeigungE(other.NeigungE), BrennA(other.BrennA), BrennE(other.BrennE),
      VerkantenA(other.VerkantenA), VerkantenE(other.VerkantenE),
      HDateiSkalaZA(other.HDateiSkalaZA), HDateiSkalaZE(other.HDateiSkalaZE),
      NebelA(other.NebelA), NebelE(other.NebelE), AusDateiname(other.AusDateiname),
      AusgabeTGA(other.AusgabeTGA), AusgabePNG(other.AusgabePNG),
      AusgabeJPG(other.AusgabeJPG), AusgabePPM(other.AusgabePPM),
      TDateiVerwenden(other.TDateiVerwenden), TDateiname(other.TDateiname),
      HDateiSkalaX(other.HDateiSkalaX), HDateiSkalaY(other.HDateiSkalaY),
      HDateiname(other.HDateiname), MDateiVerwenden(other.MDateiVerwenden),
      MaskenDateiName(other.MaskenDateiName), GenauRechnen(other.GenauRechnen),
      AusBreite(other.AusBreite), AusHoehe(other.AusHoehe), AusAuflX(other.AusAuflX),
      AusAuflY(other.AusAuflY), HoeheUeberBoden(other.HoeheUeberBoden),
      Voraussicht(other.Voraussicht), VerkantenFaktor(other.VerkantenFaktor),
      isStraight(other.isStraight), Recorder(other.Recorder),
      Bildanzahl(other.Bildanzahl), Offset(other.Offset), StartbildNr(other.StartbildNr),
      EndbildNr(other.EndbildNr), LichtX(other.LichtX), LichtY(other.LichtY),
      LichtZ(other.LichtZ), Traegheit(other.Traegheit),
      HintergrundVerwenden(other.HintergrundVerwenden), Hintergrund(other.Hintergrund)
{
}

void SceneryData::clear()
{
    BeobXA = BeobXE = 0.0;
    BeobYA = BeobYE = 0.0;
    BeobZA = BeobZE = 500.0;
    RichtungA = RichtungE = 45.0;
    NeigungA = NeigungE = -10.0;
    BrennA = BrennE = 1000.0;
    VerkantenA = VerkantenE = 0.0;
    HDateiSkalaZA = HDateiSkalaZE = 0.001;
    NebelA = NebelE = 100000.0;
    AusDateiname.clear();
    AusgabeTGA = false;
    AusgabePNG = true;
    AusgabeJPG = false;
    AusgabePPM = false;
    TDateiVerwenden = false;
    TDateiname.clear();
    HDateiSkalaX = HDateiSkalaY = 1.0;
    HDateiname.clear();
    MDateiVerwenden = false;
    MaskenDateiName.clear();
    GenauRechnen = 0;
    AusBreite = 640;
    AusHoehe = 480;
    AusAuflX = AusAuflY = 64;
    HoeheUeberBoden = 100.0;
    Voraussicht = 100.0;
    VerkantenFaktor = 0.0;
    isStraight = true;
    Recorder = false;
    Bildanzahl = 1;
    Offset = 0;
    StartbildNr = EndbildNr = 0;
    LichtX = -1.0;
    LichtY = 1.0;
    LichtZ = -1.0;
    Traegheit = 1.0;
    HintergrundVerwenden = false;
    Hintergrund = 0xFF000000u;
}
