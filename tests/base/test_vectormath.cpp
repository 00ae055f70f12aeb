// Vectors and matrices beside what they stand for.
#include "base/c4matrix.h"
#include "base/vectormath.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <cmath>

namespace {

constexpr int Rounds = 2000;

C4Vector randomVector(QRandomGenerator &random)
{
    const auto number = [&random] { return (random.generateDouble() - 0.5) * 1e4; };
    return {number(), number(), number(), 1.0};
}

double dot(const C4Vector &a, const C4Vector &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

bool isSame(const C4Vector &a, const C4Vector &b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
}

} // namespace

class TestVectorMath : public QObject {
    Q_OBJECT

private slots:
    void crossProductStandsUponBoth();
    void crossProductFollowsTheRightHand();
    void unitVectorsKeepTheirDirection();
    void vectorsWithoutLengthStay();
    void lengthsFarFromOneAreNotLost();
    void productWithAMatrixIsThatOfARow();
};

void TestVectorMath::crossProductStandsUponBoth()
{
    QRandomGenerator random(15);
    for (int round = 0; round < Rounds; ++round) {
        const C4Vector a = randomVector(random);
        const C4Vector b = randomVector(random);
        const C4Vector c = cross(a, b);
        const double scale = length(a) * length(b);
        QVERIFY(std::abs(dot(a, c)) <= 1e-12 * scale * length(a));
        QVERIFY(std::abs(dot(b, c)) <= 1e-12 * scale * length(b));
        // Lagrange: the squares of both products make up that of the lengths.
        const double sum = dot(c, c) + dot(a, b) * dot(a, b);
        QVERIFY(std::abs(sum - scale * scale) <= 1e-12 * scale * scale);
        const C4Vector turned = cross(b, a);
        QVERIFY(turned.x == -c.x && turned.y == -c.y && turned.z == -c.z);
        QCOMPARE(c.w, 0.0); // a direction
    }
}

void TestVectorMath::crossProductFollowsTheRightHand()
{
    const C4Vector x{1.0, 0.0, 0.0, 1.0};
    const C4Vector y{0.0, 1.0, 0.0, 1.0};
    QVERIFY(isSame(cross(x, y), {0.0, 0.0, 1.0, 0.0}));
    QVERIFY(isSame(difference(x, y), {1.0, -1.0, 0.0, 0.0}));
}

void TestVectorMath::unitVectorsKeepTheirDirection()
{
    QRandomGenerator random(16);
    for (int round = 0; round < Rounds; ++round) {
        C4Vector v = randomVector(random);
        v.w = random.generateDouble();
        const C4Vector unit = normalized(v);
        QVERIFY(std::abs(length(unit) - 1.0) <= 4e-16);
        QVERIFY(std::abs(dot(unit, v) - length(v)) <= 1e-12 * length(v));
        QCOMPARE(unit.w, v.w);
    }
}

void TestVectorMath::vectorsWithoutLengthStay()
{
    const C4Vector zero{0.0, -0.0, 0.0, 7.0};
    QVERIFY(isSame(normalized(zero), zero));
    QVERIFY(std::signbit(normalized(zero).y));
}

void TestVectorMath::lengthsFarFromOneAreNotLost()
{
    for (const double size : {1e-150, 1e-3, 1.0, 1e6, 1e150}) {
        const C4Vector v{3.0 * size, 0.0, -4.0 * size, 1.0};
        QVERIFY(std::abs(length(v) / (5.0 * size) - 1.0) < 1e-12);
        QVERIFY(std::abs(normalized(v).x - 0.6) < 1e-12);
    }
}

void TestVectorMath::productWithAMatrixIsThatOfARow()
{
    QRandomGenerator random(17);
    for (int round = 0; round < Rounds; ++round) {
        C4Matrix matrix;
        for (auto &row : matrix.m)
            for (double &entry : row)
                entry = random.generateDouble() - 0.5;
        C4Vector v = randomVector(random);
        v.w = random.generateDouble();
        const std::array in{v.x, v.y, v.z, v.w};
        std::array<double, 4> out{};
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t row = 0; row < 4; ++row)
                out[column] += in[row] * matrix.m[row][column];
        QVERIFY(isSame(v * matrix, {out[0], out[1], out[2], out[3]}));
    }
    QVERIFY(isSame(C4Vector{1.0, 2.0, 3.0, 4.0} * C4Matrix(), {0.0, 0.0, 0.0, 0.0}));
}

QTEST_APPLESS_MAIN(TestVectorMath)
#include "test_vectormath.moc"
