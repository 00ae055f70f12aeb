#pragma once

#include <QRgb>
#include <QString>

struct SceneryData;

namespace keykind {

/// How a field of the parameters goes together with the value of its key.
template <class T> struct PlainField {
    using Value = T;
    T SceneryData::*field;
};
/// The kinds of fields.
using Real = PlainField<double>;
using Whole = PlainField<qint32>;
using Flag = PlainField<bool>;
using Text = PlainField<QString>;
using Colour = PlainField<QRgb>;
/// A flag that reading sets and never clears.
struct StickyFlag {
    using Value = bool;
    bool SceneryData::*field;
};
/// A flag that is set where its key is not.
struct InvertedFlag {
    using Value = bool;
    bool SceneryData::*field;
};

} // namespace keykind

// All parameters and their keys: kind, field, default, key of the file, and the place of
// the key in it, from 1 on. A new key is one more line, its place the next number. In
// memory the values of the first and the last frame stand side by side.
// clang-format off
#define SCENERY_FIELDS(FIELD)                                                                             \
    FIELD(Real, BeobXA, 0.0, BeobXA, 1)                    /* observer */                                 \
    FIELD(Real, BeobXE, 0.0, BeobXE, 8)                                                                   \
    FIELD(Real, BeobYA, 0.0, BeobYA, 2)                                                                   \
    FIELD(Real, BeobYE, 0.0, BeobYE, 9)                                                                   \
    FIELD(Real, BeobZA, 500.0, BeobZA, 3)                                                                 \
    FIELD(Real, BeobZE, 500.0, BeobZE, 10)                                                                \
    FIELD(Real, RichtungA, 45.0, RichtungA, 4)             /* heading, clockwise from north */            \
    FIELD(Real, RichtungE, 45.0, RichtungE, 11)                                                           \
    FIELD(Real, NeigungA, -10.0, NeigungA, 5)              /* pitch, positive upward */                   \
    FIELD(Real, NeigungE, -10.0, NeigungE, 12)                                                            \
    FIELD(Real, BrennA, 1000.0, BrennA, 6)                 /* focal length */                             \
    FIELD(Real, BrennE, 1000.0, BrennE, 13)                                                               \
    FIELD(Real, VerkantenA, 0.0, VerkantenA, 7)            /* roll, positive turns counterclockwise */    \
    FIELD(Real, VerkantenE, 0.0, VerkantenE, 14)                                                          \
    FIELD(Real, HDateiSkalaZA, 0.001, HDateiSkalaZA, 35)   /* elevation z scale */                        \
    FIELD(Real, HDateiSkalaZE, 0.001, HDateiSkalaZE, 36)                                                  \
    FIELD(Real, NebelA, 100000.0, NebelA, 22)              /* dust, a linear range of visibility */       \
    FIELD(Real, NebelE, 100000.0, NebelE, 23)                                                             \
    FIELD(Text, AusDateiname, {}, AusDateiname, 29)        /* output template, C format, no extension */  \
    FIELD(Flag, AusgabeTGA, false, AusgabeTGA, 25)                                                        \
    FIELD(StickyFlag, AusgabePNG, true, AusgabePNG, 26)                                                   \
    FIELD(Flag, AusgabeJPG, false, AusgabeJPG, 27)                                                        \
    FIELD(Flag, AusgabePPM, false, AusgabePPM, 28)                                                        \
    FIELD(Flag, TDateiVerwenden, false, TDateiVerwenden, 30) /* use the texture file */                   \
    FIELD(Text, TDateiname, {}, TDateiname, 31)            /* texture file */                             \
    FIELD(Real, HDateiSkalaX, 1.0, HDateiSkalaX, 33)       /* size ratio of texture and elevation file */ \
    FIELD(Real, HDateiSkalaY, 1.0, HDateiSkalaY, 34)                                                      \
    FIELD(Text, HDateiname, {}, HDateiname, 32)            /* elevation file */                           \
    FIELD(Flag, MDateiVerwenden, false, MDateiVerwenden, 37) /* carried through load and save */          \
    FIELD(Text, MaskenDateiName, {}, MaskenDateiName, 38)  /* carried */                                  \
    FIELD(Whole, GenauRechnen, 0, GenauRechnen, 44)        /* quality: 0 low, 1 high, 2 extra high */     \
    FIELD(Whole, AusBreite, 640, AusBreite, 39)            /* output size in pixels */                    \
    FIELD(Whole, AusHoehe, 480, AusHoehe, 40)                                                             \
    FIELD(Whole, AusAuflX, 64, AusAuflX, 41)               /* subdivisions of the mesh */                 \
    FIELD(Whole, AusAuflY, 64, AusAuflY, 42)                                                              \
    FIELD(Real, HoeheUeberBoden, 100.0, HoeheUeberBoden, 47) /* carried */                                \
    FIELD(Real, Voraussicht, 100.0, Voraussicht, 49)       /* carried */                                  \
    FIELD(Real, VerkantenFaktor, 0.0, VerkantenFaktor, 48) /* carried */                                  \
    FIELD(InvertedFlag, isStraight, true, Rundflug, 46)    /* a set key means a curved flight */          \
    FIELD(Flag, Recorder, false, Recorder, 50)             /* stored, read by no run */                   \
    FIELD(Whole, Bildanzahl, 1, Bildanzahl, 15)            /* frames of the whole movement */             \
    FIELD(Whole, Offset, 0, Offset, 16)                    /* number of frame 0 in the file names */      \
    FIELD(Whole, StartbildNr, 0, StartbildNr, 17)          /* first and last frame to calculate, */       \
    FIELD(Whole, EndbildNr, 0, EndbildNr, 18)              /* zero-based */                               \
    FIELD(Real, LichtX, -1.0, LichtX, 19)                  /* incident light, along its travel */         \
    FIELD(Real, LichtY, 1.0, LichtY, 20)                                                                  \
    FIELD(Real, LichtZ, -1.0, LichtZ, 21)                                                                 \
    FIELD(Real, Traegheit, 1.0, Traegheit, 24)             /* smoothness of a straight flight, 0 to 1 */  \
    FIELD(Flag, HintergrundVerwenden, false, HintergrundVerwenden, 43) /* use the background colour */    \
    FIELD(Colour, Hintergrund, 0xFF000000u, Hintergrund, 45)
// clang-format on
