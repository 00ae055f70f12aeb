#include "scene/fieldlimits.h"

#include <cmath>

namespace {

using D = SceneryData;

constexpr RealLimits Reals[]{
    {&D::HDateiSkalaX, 0.0, 100.0, 6},
    {&D::HDateiSkalaY, 0.0, 100.0, 6},
    {&D::LichtX, -10.0, 10.0},
    {&D::LichtY, -10.0, 10.0},
    {&D::LichtZ, -10.0, 10.0},
    {&D::BeobXA, -1000000.0, 1000000.0},
    {&D::BeobXE, -1000000.0, 1000000.0},
    {&D::BeobYA, -1000000.0, 1000000.0},
    {&D::BeobYE, -1000000.0, 1000000.0},
    {&D::BeobZA, -1000000.0, 1000000.0},
    {&D::BeobZE, -1000000.0, 1000000.0},
    {&D::RichtungA, -720.0, 720.0},
    {&D::RichtungE, -720.0, 720.0},
    {&D::NeigungA, -360.0, 360.0},
    {&D::NeigungE, -360.0, 360.0},
    {&D::BrennA, 0.01, 100000.0},
    {&D::BrennE, 0.01, 100000.0},
    {&D::VerkantenA, -720.0, 720.0},
    {&D::VerkantenE, -720.0, 720.0},
    {&D::HDateiSkalaZA, -10000.0, 10000.0, 6},
    {&D::HDateiSkalaZE, -10000.0, 10000.0, 6},
    {&D::NebelA, -6.0, 6.0, 2, true},
    {&D::NebelE, -6.0, 6.0, 2, true},
    {&D::Traegheit, 0.0, 1.0},
};

constexpr WholeLimits Wholes[]{
    {&D::AusBreite, 8, 32768},   {&D::AusHoehe, 8, 32768},   {&D::AusAuflX, 2, 32768},
    {&D::AusAuflY, 2, 32768},    {&D::Bildanzahl, 1, 32768}, {&D::Offset, 0, 99999},
    {&D::StartbildNr, 0, 32768}, {&D::EndbildNr, 0, 32768},
};

constexpr QString D::*Texts[]{&D::AusDateiname, &D::TDateiname, &D::HDateiname};

// What has no logarithm stands as this one.
constexpr double LeastWithLogarithm = 0.000001;
constexpr double LogOfTen = 2.302585092994046;

// Unlike std::clamp() not undefined for what is no number, and none comes here.
template <class Number> Number held(Number value, Number lowest, Number highest)
{
    return value < lowest ? lowest : value > highest ? highest : value;
}

// As a spin box rounds: through the text that it shows.
double rounded(double value, int decimals)
{
    return QString::number(value, 'f', decimals).toDouble();
}

} // namespace

std::span<const RealLimits> realLimits() { return Reals; }

std::span<const WholeLimits> wholeLimits() { return Wholes; }

double showableValue(const RealLimits &limits, double parameter)
{
    if (limits.isLogarithm)
        return parameter > 0.0 ? parameter : LeastWithLogarithm;
    return std::isnan(parameter) ? 0.0 : parameter;
}

double fieldValue(const RealLimits &limits, double parameter)
{
    const double value = showableValue(limits, parameter);
    return limits.isLogarithm ? std::log(value) / LogOfTen : value;
}

double parameterValue(const RealLimits &limits, double field)
{
    return limits.isLogarithm ? std::pow(10.0, field) : field;
}

SceneryData asShown(SceneryData data)
{
    for (const RealLimits &limits : Reals) {
        double &value = data.*limits.field;
        const double field = rounded(fieldValue(limits, value), limits.decimals);
        value = parameterValue(limits, held(field, limits.lowest, limits.highest));
    }
    for (const auto &[field, lowest, highest] : Wholes)
        data.*field = held(data.*field, lowest, highest);
    for (QString D::*const text : Texts)
        (data.*text).truncate(MaxFieldText);
    if (data.GenauRechnen != 1 && data.GenauRechnen != 2)
        data.GenauRechnen = 0;
    data.Hintergrund |= 0xFF000000u; // the field shows no transparency
    return data;
}
