#include "terrain/splinefit.h"

#include "flight/nurbs.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int Order = 4;

// A symmetric matrix of which only the diagonal and three lines beside it are not 0.
class Band {
public:
    explicit Band(std::size_t size) : m_rows(size) {}

    // Row `row`, `beside` places left of the diagonal.
    [[nodiscard]] double &at(std::size_t row, std::size_t beside)
    {
        return m_rows[row][beside];
    }
    // Solves the system by Cholesky's factors, in place.
    void solve(std::vector<double> &right)
    {
        const std::size_t size = m_rows.size();
        for (std::size_t i = 0; i < size; ++i)
            factorRow(i);
        for (std::size_t i = 0; i < size; ++i) {
            for (std::size_t k = 1; k < Order && k <= i; ++k)
                right[i] -= m_rows[i][k] * right[i - k];
            right[i] /= m_rows[i][0];
        }
        for (std::size_t i = size; i-- > 0;) {
            for (std::size_t k = 1; k < Order && i + k < size; ++k)
                right[i] -= m_rows[i + k][k] * right[i + k];
            right[i] /= m_rows[i][0];
        }
    }

private:
    void factorRow(std::size_t i)
    {
        for (std::size_t k = std::min<std::size_t>(i, Order - 1) + 1; k-- > 0;) {
            double sum = m_rows[i][k];
            const std::size_t column = i - k;
            for (std::size_t j = k + 1; j < Order && j <= i; ++j)
                sum -= m_rows[i][j] * m_rows[column][j - k];
            m_rows[i][k] = k > 0 ? sum / m_rows[column][0] : std::sqrt(sum);
        }
    }

    std::vector<std::array<double, Order>> m_rows;
};

} // namespace

FlightSpline::FlightSpline(int controlPoints)
    : m_size(controlPoints), m_knots(std::size_t(controlPoints + Order))
{
    NURBS::knot(m_size, Order, m_knots.data());
}

// The recursion over the one span that holds the parameter.
CurveWeights FlightSpline::weightsAt(double t) const
{
    const double u = std::clamp(t, 0.0, 1.0) * (m_size - 3);
    const int span = std::min(int(u), m_size - 4) + 3; // its knots are [span, span + 1]
    CurveWeights result{span - 3, {1.0, 0.0, 0.0, 0.0}};
    const auto knot = [this](int i) { return double(m_knots[std::size_t(i)]); };
    for (int degree = 1; degree < Order; ++degree) {
        double saved = 0.0;
        for (int r = 0; r < degree; ++r) {
            const double right = knot(span + r + 1);
            const double left = knot(span + 1 - degree + r);
            double &weight = result.weights[std::size_t(r)];
            const double share = weight / (right - left);
            weight = saved + (right - u) * share;
            saved = (u - left) * share;
        }
        result.weights[std::size_t(degree)] = saved;
    }
    return result;
}

double FlightSpline::valueAt(double t, const std::vector<double> &net) const
{
    const CurveWeights w = weightsAt(t);
    double value = 0.0;
    for (std::size_t k = 0; k < Order; ++k)
        value += w.weights[k] * net[std::size_t(w.first) + k];
    return value;
}

double FlightSpline::centreOf(int point) const
{
    const auto i = std::size_t(point);
    return double(m_knots[i + 1] + m_knots[i + 2] + m_knots[i + 3]) / 3 / (m_size - 3);
}

std::vector<double> FlightSpline::fitted(const std::vector<double> &values) const
{
    // The ends of the curve are its first and last control point; the others are free.
    const auto free = std::size_t(m_size - 2);
    Band normal(free);
    std::vector<double> right(free, 0.0);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const CurveWeights w = weightsAt(double(i) / double(values.size() - 1));
        double rest = values[i];
        for (int k = 0; k < Order; ++k) {
            const int point = w.first + k;
            if (point == 0 || point == m_size - 1)
                rest -= w.weights[std::size_t(k)] *
                        (point == 0 ? values.front() : values.back());
        }
        for (int k = 0; k < Order; ++k) {
            const int row = w.first + k - 1;
            if (row < 0 || row >= int(free))
                continue;
            right[std::size_t(row)] += w.weights[std::size_t(k)] * rest;
            for (int j = std::max(0, k - row); j <= k; ++j)
                normal.at(std::size_t(row), std::size_t(k - j)) +=
                    w.weights[std::size_t(k)] * w.weights[std::size_t(j)];
        }
    }
    normal.solve(right);
    std::vector<double> net{values.front()};
    net.insert(net.end(), right.begin(), right.end());
    net.push_back(values.back());
    return net;
}
