#include "render/plain/transformation.h"

#include "base/vectormath.h"
#include "render/plain/screentrigon.h"

#include <QSettings>

#include <cmath>

namespace plain {

namespace {

// Keeps the observer off the mesh lines and the view vector off the axes.
constexpr double AxisOffset = 1e-5;
// Stands for a depth of 0, by which nothing can be divided.
constexpr double SmallestDepth = 1e-18;

// Colour of a terrain that was given no texture.
constexpr unsigned int NoTexture = 0xFFFFFFFFu;

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
    : m_parent(parent), Licht(normalized(light)), Quarter(storedQuarter())
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

void Transformation::SetzeTexturDatei(TextureImage *texture)
{
    Textur = texture;
    m_sampler.reset();
    if (texture)
        m_sampler.emplace(*texture);
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

void Transformation::ZeichneEinDreieck(C4Vector *vertices, C4Vector *normals, double fog,
                                       ScreenTrigon *trigon)
{
    const C4Vector &v0 = vertices[0];
    const C4Vector &v1 = vertices[1];
    const C4Vector &v2 = vertices[2];
    m_centroid = {
        (v0.x + v1.x + v2.x) / 3 - Position.x, (v0.y + v1.y + v2.y) / 3 - Position.y,
        (v0.z + v1.z + v2.z) / 3 - Position.z, (v0.w + v1.w + v2.w) / 3 - Position.w};
    // Points down into the terrain, so only its upper side is drawn.
    m_faceNormal = cross(difference(v1, v0), difference(v2, v0));
    m_faceNormal.w = 1.0;
    const double facing = m_centroid.x * m_faceNormal.x + m_centroid.y * m_faceNormal.y +
                          m_centroid.z * m_faceNormal.z + m_centroid.w;
    if (!(facing > 0.0))
        return;

    for (int k = 0; k < 3; ++k) {
        C4Vector s = vertices[k] * Projektion;
        if (!(s.w > 0.0))
            return;
        const double x = s.x / s.w;
        const double row = -s.y / s.w;
        if (!onScreen(x) || !onScreen(row))
            return;
        s.x = std::trunc(x);
        s.y = std::trunc(row);
        SchirmEcken[k] = s;
    }
    trigon->Rechnen(SchirmEcken.data(), vertices, normals, fog);
}

double Transformation::determinant(double px, double py, double pz, const Plane &plane)
{
    return plane.qx * plane.ry * pz + plane.rx * py * plane.qz +
           px * plane.qy * plane.rz - plane.qy * plane.rx * pz -
           px * plane.ry * plane.qz - py * plane.rz * plane.qx;
}

Transformation::Plane Transformation::planeOf(const C4Vector &a, const C4Vector &b,
                                              const C4Vector &c) const
{
    Plane plane{
        a.x - Position.x,
        a.y - Position.y,
        a.z - Position.z, // p
        a.x - b.x,
        a.y - b.y,
        a.z - b.z, // q
        a.x - c.x,
        a.y - c.y,
        a.z - c.z, // r
        0.0,
    };
    plane.numerator = determinant(plane.px, plane.py, plane.pz, plane);
    return plane;
}

void Transformation::SetzeDreiecksEckpunkte(C4Vector &a, C4Vector &b, C4Vector &c)
{
    EbenenMatrix = planeOf(a, b, c);
}

void Transformation::SetzeDreiecksEckpunkte(C4Vector *corners)
{
    SetzeDreiecksEckpunkte(corners[0], corners[1], corners[2]);
}

C4Vector Transformation::castRay(double px, double py) const
{
    const PixelRay d = ray(px, py);
    const double t = EbenenMatrix.numerator / determinant(d.x, d.y, d.z, EbenenMatrix);
    return {Position.x + t * d.x, Position.y + t * d.y, Position.z + t * d.z, 1.0};
}

void Transformation::FarbeImDreieck2(int x, int y, unsigned int *colour)
{
    *colour = m_sampler ? m_sampler->nearest(castRay(x, y)) : NoTexture;
}

void Transformation::FarbeImDreieck1(int x, int y, unsigned int *colour)
{
    if (!m_sampler) {
        *colour = NoTexture;
        return;
    }
    auto &p = m_samplePoints;
    p[0] = castRay(x, y);
    p[1] = castRay(x - 0.25, y - 0.25);
    if (std::abs(p[0].x - p[1].x) < 1.0 && std::abs(p[0].y - p[1].y) < 1.0) {
        *colour = m_sampler->smooth(p[0]); // the pixel covers less than a texel or so
        return;
    }
    p[2] = castRay(x + 0.25, y - 0.25);
    // The other two samples mirror those through the centre.
    p[3].x = 2 * p[0].x - p[2].x;
    p[3].y = 2 * p[0].y - p[2].y;
    p[4].x = 2 * p[0].x - p[1].x;
    p[4].y = 2 * p[0].y - p[1].y;
    *colour = m_sampler->average(p.data());
}

double Transformation::PunktImDreieck(int x, int y, C4Vector *triangle,
                                      C4Vector *point) const
{
    const Plane plane = planeOf(triangle[0], triangle[1], triangle[2]);
    const PixelRay d = ray(x, y);
    const double t = plane.numerator / determinant(d.x, d.y, d.z, plane);
    point->x = Position.x + t * d.x;
    point->y = Position.y + t * d.y;
    point->z = Position.z + t * d.z;
    return t;
}

} // namespace plain
