#include "scene/scenerykeys.h"

#include <array>

namespace {

using D = SceneryData;

#define KEY(name)                                                                        \
    SceneryKey { QLatin1String(#name), &D::name }

const std::array Keys{
    KEY(BeobXA),
    KEY(BeobYA),
    KEY(BeobZA),
    KEY(RichtungA),
    KEY(NeigungA),
    KEY(BrennA),
    KEY(VerkantenA),
    KEY(BeobXE),
    KEY(BeobYE),
    KEY(BeobZE),
    KEY(RichtungE),
    KEY(NeigungE),
    KEY(BrennE),
    KEY(VerkantenE),
    KEY(Bildanzahl),
    KEY(Offset),
    KEY(StartbildNr),
    KEY(EndbildNr),
    KEY(LichtX),
    KEY(LichtY),
    KEY(LichtZ),
    KEY(NebelA),
    KEY(NebelE),
    KEY(Traegheit),
    KEY(AusgabeTGA),
    SceneryKey{QLatin1String("AusgabePNG"), StickyFlag{&D::AusgabePNG}},
    KEY(AusgabeJPG),
    KEY(AusgabePPM),
    KEY(AusDateiname),
    KEY(TDateiVerwenden),
    KEY(TDateiname),
    KEY(HDateiname),
    KEY(HDateiSkalaX),
    KEY(HDateiSkalaY),
    KEY(HDateiSkalaZA),
    KEY(HDateiSkalaZE),
    KEY(MDateiVerwenden),
    KEY(MaskenDateiName),
    KEY(AusBreite),
    KEY(AusHoehe),
    KEY(AusAuflX),
    KEY(AusAuflY),
    KEY(HintergrundVerwenden),
    KEY(GenauRechnen),
    KEY(Hintergrund),
    SceneryKey{QLatin1String("Rundflug"), InvertedFlag{&D::isStraight}},
    KEY(HoeheUeberBoden),
    KEY(VerkantenFaktor),
    KEY(Voraussicht),
    KEY(Recorder),
};

#undef KEY

} // namespace

std::span<const SceneryKey> sceneryKeys() { return Keys; }
