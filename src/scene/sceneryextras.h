#pragma once

#include <QLatin1String>
#include <QRgb>
#include <QString>

#include <array>
#include <limits>
#include <optional>
#include <span>

struct SceneryExtras;

/// Where the light comes from: the told vector, two angles, or a place and a time.
enum class SunSource { Told, Angles, Time };
/// What stands behind the terrain: the told background, or a sky.
enum class SkyKind { Color, Gradient, Daylight };
/// What dims the distance: the told dust, or the colour of the sky behind.
enum class HazeKind { Told, Sky };

/// The words that stand for the values of choices, in their order.
inline constexpr std::array SunWords{QLatin1String("told"), QLatin1String("angles"),
                                     QLatin1String("time")};
inline constexpr std::array SkyWords{QLatin1String("color"), QLatin1String("gradient"),
                                     QLatin1String("daylight")};
inline constexpr std::array HazeWords{QLatin1String("told"), QLatin1String("sky")};

namespace extrakind {

/// A switch, 0 or 1.
struct Flag {
    using Value = bool;
    Value SceneryExtras::*field;
};
/// A whole number within its range, both ends included.
struct Whole {
    using Value = qint32;
    Value SceneryExtras::*field;
    qint32 lowest;
    qint32 highest;
};
/// A finite number within its range.
struct Real {
    using Value = double;
    Value SceneryExtras::*field;
    double lowest;
    double highest;
};
/// A number that may be missing; an empty value then.
struct OptionalReal {
    using Value = std::optional<double>;
    Value SceneryExtras::*field;
    double lowest;
    double highest;
};
/// An opaque colour, in the file rrggbb.
struct Colour {
    using Value = QRgb;
    Value SceneryExtras::*field;
};
/// A colour that may be missing.
struct OptionalColour {
    using Value = std::optional<QRgb>;
    Value SceneryExtras::*field;
};
/// Date and time in ISO 8601 with a zone, as it was written; empty where there is none.
struct Time {
    using Value = QString;
    Value SceneryExtras::*field;
};
/// One of several words.
template <class Enum, const auto &Words> struct Choice {
    using Value = Enum;
    static constexpr std::span<const QLatin1String> words = Words;
    Value SceneryExtras::*field;
};
using Sun = Choice<SunSource, SunWords>;
using Sky = Choice<SkyKind, SkyWords>;
using Haze = Choice<HazeKind, HazeWords>;

// Limits where the thing itself has none: no divisor is 0, no square overflows.
constexpr double Least = 0.001;
constexpr double Most = 1e9;
constexpr qint32 LeastSeed = std::numeric_limits<qint32>::min();
constexpr qint32 MostSeed = std::numeric_limits<qint32>::max();

} // namespace extrakind

// All extras: kind, key and field, default (which means "off"), lowest and highest value.
// They are written in this order. A new extra is one more line.
// clang-format off
#define SCENERY_EXTRAS(EXTRA)                                                                           \
    EXTRA(Real, MetresPerUnit, 0.0, 0.0, Most)             /* of a world unit; 0: unknown, counts as 1 */ \
    EXTRA(Whole, FramesPerSecond, 25, 1, 120)                                                           \
    EXTRA(Flag, FollowGround, false)                       /* curved flights keep their height over it */ \
    EXTRA(Sun, Sun, SunSource::Told)                                                                    \
    EXTRA(Real, SunAzimuth, 225.0, 0.0, 360.0)             /* degrees, clockwise from north */          \
    EXTRA(Real, SunHeight, 40.0, -90.0, 90.0)              /* degrees above the horizon */              \
    EXTRA(Time, SunTime, {})                               /* of the first frame */                     \
    EXTRA(Time, SunTimeLast, {})                           /* of the last one; empty: as the first */   \
    EXTRA(OptionalReal, Latitude, {}, -90.0, 90.0)         /* degrees, of the terrain's middle */       \
    EXTRA(OptionalReal, Longitude, {}, -180.0, 360.0)      /* degrees, east positive */                 \
    EXTRA(Flag, CastShadows, false)                                                                     \
    EXTRA(Real, SunDiameter, 0.53, 0.0, 10.0)              /* degrees; 0: sharp shadows */              \
    EXTRA(Real, SkyLight, 0.0, 0.0, 1.0)                   /* share of light from the open sky */       \
    EXTRA(Real, BounceLight, 0.0, 0.0, 1.0)                /* share of light from lit ground */         \
    EXTRA(Sky, Sky, SkyKind::Color)                                                                     \
    EXTRA(Colour, SkyZenith, 0xFF3A6EA5u)                  /* of the gradient */                        \
    EXTRA(Colour, SkyHorizon, 0xFFCFDFEEu)                                                              \
    EXTRA(Real, Turbidity, 3.0, 2.0, 10.0)                 /* of the daylight */                        \
    EXTRA(Flag, SunDisc, false)                                                                         \
    EXTRA(Haze, Haze, HazeKind::Told)                                                                   \
    EXTRA(Real, HazeDistance, 30000.0, Least, Most)        /* m, at which a contrast falls to 1/e */    \
    EXTRA(Real, HazeScaleHeight, 2000.0, Least, Most)      /* m, over which haze thins to 1/e */        \
    EXTRA(Flag, Water, false)                                                                           \
    EXTRA(Real, WaterLevel, 0.0, -Most, Most)              /* m */                                      \
    EXTRA(OptionalColour, WaterMask, {})                   /* texture colour that is water anywhere */  \
    EXTRA(Colour, WaterColor, 0xFF1D3B4Au)                                                              \
    EXTRA(Real, WaterClarity, 8.0, Least, Most)            /* m, over which sight into it falls to 1/e */ \
    EXTRA(Real, WaveHeight, 0.2, 0.0, 1.0)                                                              \
    EXTRA(Flag, SmoothGround, false)                                                                    \
    EXTRA(Flag, ClosedSurface, false)                                                                   \
    EXTRA(Flag, SmoothEdges, false)                                                                     \
    EXTRA(Real, Detail, 0.0, 0.0, 1.0)                     /* roughness below the cell */               \
    EXTRA(OptionalReal, SnowLine, {}, -Most, Most)         /* m */                                      \
    EXTRA(Real, SnowSlope, 45.0, 0.0, 90.0)                /* degrees, on flatter ground than that */   \
    EXTRA(Whole, Seed, 1, LeastSeed, MostSeed)             /* of everything that is random */           \
    EXTRA(Real, Exposure, 0.0, -8.0, 8.0)                  /* EV */                                     \
    EXTRA(Flag, FilmicCurve, false)                                                                     \
    EXTRA(Whole, MotionBlur, 1, 1, 64)                     /* pictures a frame */                       \
    EXTRA(Real, ShutterAngle, 180.0, 0.0, 360.0)           /* degrees */                                \
    EXTRA(Flag, OutputEXR, false)                          /* beside the told formats */                \
    EXTRA(Flag, OutputPNG16, false)
// clang-format on

/// Settings of a scenery beyond the told keys: a value, whose fields stand in
/// SCENERY_EXTRAS. All at their defaults, they change nothing.
struct SceneryExtras {
#define EXTRA(kind, name, value, ...) extrakind::kind::Value name = value;
    SCENERY_EXTRAS(EXTRA)
#undef EXTRA
    /// Lines of the section that say nothing to this program, each with its line end; a
    /// newer one may have written them.
    QString keptLines;

    bool operator==(const SceneryExtras &) const = default;
};
