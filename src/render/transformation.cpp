#include "render/transformation.h"

#include "base/vectormath.h"

#include <QSettings>

#include <cmath>

namespace {

// Keeps the observer off the mesh lines and the view vector off the axes.
constexpr double AxisOffset = 1e-5;
// Stands for a depth of 0, by which nothing can be divided.
constexpr double SmallestDepth = 1e-18;

int storedQuarter()
{
    // Not the store of the settings dialog; nothing in the program writes it.
    const QSettings settings(QStringLiteral("Zephrant"), QString());
    const int stored = settings.value(QStringLiteral("Settings/Quarter"), 0).toInt();
    return stored >= 0 && stored <= 4 ? stored : 0;
}

bool onScreen(double position)
{
    return position >= -Transformation::ScreenLimit &&
           position <= Transformation::ScreenLimit;
}

} // namespace

Transformation::Transformation(QWidget *parent, C4Vector light, int width, int height)
    : parentWidget(parent), Licht(normalized(light)), Quarter(storedQuarter())
{
    switch (Quarter) {
    case 0:
        MitteX = width * 0.5;
        MitteY = height * -0.5;
        break;
    case 1: // upper left
        MitteX = width;
        MitteY = -height;
        break;
    case 2: // upper right
        MitteY = -height;
        break;
    case 3: // lower left
        MitteX = width;
        break;
    default: // lower right: the centre is the corner
        break;
    }
}

void Transformation::SetView(C4Vector position, double direction, double pitch,
                             double focal, double roll)
{
    Position = {position.x + AxisOffset, position.y + AxisOffset, position.z + AxisOffset,
                position.w};
    if (Quarter != 0)
        focal *= 2.0;
    Sicht = {focal * std::sin(direction) * std::cos(pitch) + AxisOffset,
             focal * std::cos(direction) * std::cos(pitch) + AxisOffset,
             focal * std::sin(pitch) + AxisOffset, 0.0};
    SichtLaenge2 = Sicht.x * Sicht.x + Sicht.y * Sicht.y + Sicht.z * Sicht.z;
    Richtung = direction;
    Neigung = pitch;
    Brennweite = focal;

    Rechts.y = -Sicht.x / std::sqrt(Sicht.x * Sicht.x + Sicht.y * Sicht.y);
    Rechts.x = -Rechts.y * Sicht.y / Sicht.x;
    Rechts.z = 0.0;
    Rechts = normalized(Rechts);
    Oben.x = Sicht.z * Rechts.y - Sicht.y * Rechts.z;
    Oben.y = Sicht.x * Rechts.z - Sicht.z * Rechts.x;
    Oben.z = Rechts.x * Sicht.y - Rechts.y * Sicht.x;
    Oben = normalized(Oben);

    Verkanten = roll;
    RollSin = std::sin(roll);
    RollCos = std::cos(roll);
    BereiteT();
}

void Transformation::BereiteT()
{
    // From the angles and not from Sicht, so that its offsets stay out.
    const double s = std::sin(Neigung);
    const double c = std::cos(Neigung);
    const double sd = std::sin(Richtung);
    const double cd = std::cos(Richtung);
    const double sr = std::sin(Verkanten);
    const double cr = std::cos(Verkanten);
    const double ahead[3] = {c * sd, c * cd, s};
    const double right[3] = {cd, -sd, 0.0};
    const double up[3] = {-s * sd, -s * cd, c};

    auto &m = Projektion.m;
    for (int r = 0; r < 3; ++r) {
        m[r][0] = MitteX * ahead[r] + Brennweite * (cr * right[r] - sr * up[r]);
        m[r][1] = MitteY * ahead[r] + Brennweite * (sr * right[r] + cr * up[r]);
        m[r][2] = 0.0;
        m[r][3] = ahead[r];
    }
    for (int k = 0; k < 4; ++k)
        m[3][k] = -(Position.x * m[0][k] + Position.y * m[1][k] + Position.z * m[2][k]);
}

int Transformation::Bildschirmpunkt(const C4Vector *point, C4Vector *screen) const
{
    *screen = *point * Projektion;
    if (screen->w < 0.0)
        return 1;
    if (screen->w < SmallestDepth)
        screen->w = SmallestDepth;
    const double x = screen->x / screen->w;
    const double row = -screen->y / screen->w;
    if (!onScreen(x) || !onScreen(row))
        return 1;
    screen->x = std::trunc(x);
    screen->y = std::trunc(row);
    return 0;
}

EbenenMatrix Transformation::SetzeDreiecksEckpunkte(const C4Vector &a, const C4Vector &b,
                                                    const C4Vector &c) const
{
    EbenenMatrix plane{
        a.x - b.x, a.y - b.y, a.z - b.z, // q
        a.x - c.x, a.y - c.y, a.z - c.z, // r
        0.0,
    };
    plane.numerator =
        plane.determinant(a.x - Position.x, a.y - Position.y, a.z - Position.z);
    return plane;
}

double Transformation::PunktImDreieck(int x, int y, C4Vector *triangle,
                                      C4Vector *point) const
{
    const EbenenMatrix plane =
        SetzeDreiecksEckpunkte(triangle[0], triangle[1], triangle[2]);
    const PixelRay d = ray(x, y);
    const double t = plane.numerator / plane.determinant(d.x, d.y, d.z);
    point->x = Position.x + t * d.x;
    point->y = Position.y + t * d.y;
    point->z = Position.z + t * d.z;
    return t;
}
