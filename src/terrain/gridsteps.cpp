#include "terrain/gridsteps.h"

#include <QString>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr std::size_t FirstSlots = 1 << 10;
constexpr std::size_t MostSlots = 1 << 21;
constexpr double Free = std::numeric_limits<double>::quiet_NaN();
// Steps of an axis; more are taken for values that are not even at all.
constexpr double MostSteps = 1 << 22;
// Of a step, by which values may be off.
constexpr double Tolerance = 0.1;

std::size_t hashed(double value)
{
    auto bits = std::bit_cast<std::uint64_t>(value);
    bits ^= bits >> 29;
    bits *= 0x9E3779B97F4A7C15u;
    return std::size_t(bits >> 32);
}

// Steps as wide as the first values say, then as all that came before say.
std::optional<AxisSteps> fitted(const std::vector<double> &values, double guess)
{
    const double first = values.front();
    const double last = values.back();
    double step = guess;
    double index = 0.0;
    for (const double value : values) {
        index = std::round((value - first) / step);
        if (index > MostSteps ||
            std::fabs((value - first) / step - index) > 2 * Tolerance)
            return {};
        if (index > 0)
            step = (value - first) / index;
    }
    if (index < 1)
        return {};
    return AxisSteps{first, (last - first) / index, std::int64_t(index) + 1};
}

// Whether values lie on steps. Several at one step are off by the noise of rounding; they
// are none where most steps have no value, for then wider and narrower gaps mix.
bool fits(const std::vector<double> &values, const AxisSteps &steps)
{
    constexpr double FarLess = 1e-3; // noise of only two steps
    double lastStep = -1.0;
    double taken = 0.0;
    double noise = 0.0;
    for (const double value : values) {
        const double at = (value - steps.first) / steps.step;
        const double step = std::round(at);
        if (std::fabs(at - step) > Tolerance)
            return false;
        if (step != lastStep)
            ++taken;
        noise = std::max(noise, std::fabs(at - step));
        lastStep = step;
    }
    const auto count = double(steps.count);
    return taken == double(values.size()) ||
           (2 * taken >= count && (count > 2 || noise < FarLess));
}

// The shortest decimal number that leads to the last value as well: ends of text have
// few digits, the difference of two of them has many.
AxisSteps withRoundStep(AxisSteps steps, double last)
{
    constexpr int MostDigits = 15;
    constexpr double Unnoticed = 1e-12; // of the last value
    for (int digits = 1; digits <= MostDigits; ++digits) {
        const double step = QString::number(steps.step, 'g', digits).toDouble();
        const double reached = steps.first + double(steps.count - 1) * step;
        if (std::fabs(reached - last) <= Unnoticed * std::fabs(last)) {
            steps.step = step;
            break;
        }
    }
    return steps;
}

// Differences that may be the step: the smallest, those above a leap, for below it is
// the noise of rounding, and the one in the middle.
std::vector<double> possibleSteps(const std::vector<double> &values, double blur)
{
    constexpr double Leap = 8.0;
    constexpr std::size_t Most = 8;
    std::vector<double> differences;
    differences.reserve(values.size());
    for (std::size_t i = 1; i < values.size(); ++i)
        if (values[i] - values[i - 1] > 2 * blur)
            differences.push_back(values[i] - values[i - 1]);
    if (differences.empty())
        return {};
    std::sort(differences.begin(), differences.end());
    std::vector<double> possible{differences.front(),
                                 differences[differences.size() / 2]};
    for (std::size_t i = 1; i < differences.size() && possible.size() < Most; ++i)
        if (differences[i] > Leap * differences[i - 1])
            possible.push_back(differences[i]);
    std::sort(possible.begin(), possible.end(), std::greater<>());
    return possible;
}

} // namespace

AxisValues::AxisValues() : m_slots(FirstSlots, Free) {}

void AxisValues::insert(double value)
{
    m_last = value;
    m_lowest = m_hasAny ? std::min(m_lowest, value) : value;
    m_highest = m_hasAny ? std::max(m_highest, value) : value;
    m_hasAny = true;
    place(blurred(value));
    if (2 * m_count > m_slots.size())
        grow();
}

void AxisValues::place(double value)
{
    const double key = value == 0.0 ? 0.0 : value; // one zero
    std::size_t at = hashed(key) & (m_slots.size() - 1);
    while (!std::isnan(m_slots[at])) {
        if (m_slots[at] == key)
            return;
        at = (at + 1) & (m_slots.size() - 1);
    }
    m_slots[at] = key;
    ++m_count;
}

void AxisValues::grow()
{
    if (m_slots.size() < MostSlots)
        return placeAnew(2 * m_slots.size());
    do {
        blurMore();
        placeAnew(MostSlots);
    } while (4 * m_count > MostSlots);
}

void AxisValues::placeAnew(std::size_t size)
{
    std::vector<double> old(size, Free);
    old.swap(m_slots);
    m_count = 0;
    for (const double value : old)
        if (!std::isnan(value))
            place(blurred(value));
}

double AxisValues::blurred(double value) const
{
    return m_blur > 0.0 ? std::round(value / m_blur) * m_blur : value;
}

void AxisValues::blurMore()
{
    constexpr double Finest = 1e-9; // of the extent
    m_blur = m_blur > 0.0 ? 2 * m_blur : Finest * (m_highest - m_lowest);
}

std::vector<double> AxisValues::sorted() const
{
    std::vector<double> values;
    values.reserve(m_count);
    std::copy_if(m_slots.begin(), m_slots.end(), std::back_inserter(values),
                 [](double value) { return !std::isnan(value); });
    std::sort(values.begin(), values.end());
    return values;
}

std::optional<AxisSteps> evenSteps(const std::vector<double> &values, double blur)
{
    for (const double guess : possibleSteps(values, blur)) {
        const auto steps = fitted(values, guess);
        if (steps && fits(values, *steps) && steps->step > 4 * blur)
            return withRoundStep(*steps, values.back());
    }
    return {};
}
