#pragma once

#include <QObject>
#include <QRgb>
#include <QString>

/// All parameters of a render job, named after the keys of the scenery file.
///
/// Suffix A is the first frame, E the last. Angles are degrees, positions world
/// units with the origin at the lower left corner of the elevation file.
class SceneryData : public QObject {
    Q_OBJECT

public:
    SceneryData();
    SceneryData(const SceneryData &other);
    SceneryData &operator=(const SceneryData &) = delete;

    /// Sets every field to its default.
    void clear();

    double BeobXA, BeobXE; // observer
    double BeobYA, BeobYE;
    double BeobZA, BeobZE;
    double RichtungA, RichtungE;         // heading, clockwise from north
    double NeigungA, NeigungE;           // pitch, positive upward
    double BrennA, BrennE;               // focal length
    double VerkantenA, VerkantenE;       // roll, positive turns the view counterclockwise
    double HDateiSkalaZA, HDateiSkalaZE; // elevation z scale
    double NebelA, NebelE;               // dust, as a linear range of visibility
    QString AusDateiname; // output name template, a C format, without extension
    bool AusgabeTGA;
    bool AusgabePNG;
    bool AusgabeJPG;
    bool AusgabePPM;
    bool TDateiVerwenden; // use the texture file
    QString TDateiname;   // texture file
    double HDateiSkalaX;  // size ratio between texture and elevation file
    double HDateiSkalaY;
    QString HDateiname;      // elevation file
    bool MDateiVerwenden;    // carried through load and save
    QString MaskenDateiName; // carried
    qint32 GenauRechnen;     // quality: 0 low, 1 high, 2 extra high
    qint32 AusBreite;        // output size in pixels
    qint32 AusHoehe;
    qint32 AusAuflX; // subdivisions of the mesh
    qint32 AusAuflY;
    double HoeheUeberBoden; // carried
    double Voraussicht;     // carried
    double VerkantenFaktor; // carried
    bool isStraight;        // inverse of the key Rundflug
    bool Recorder;          // stored, read by no run
    qint32 Bildanzahl;      // frames of the whole movement
    qint32 Offset;          // number of frame 0 in the file names
    qint32 StartbildNr;     // first and last frame to calculate, zero-based
    qint32 EndbildNr;
    double LichtX, LichtY, LichtZ; // incident light, along its travel
    double Traegheit;              // smoothness of a straight flight, 0 to 1
    bool HintergrundVerwenden;     // use the background colour
    QRgb Hintergrund;
};
