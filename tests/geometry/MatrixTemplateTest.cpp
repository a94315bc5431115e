#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "geometry/MatrixTemplate.h"
#include "geometry/VectorQUICK.h"
#include "support/LogCapture.h"

namespace {

using Matrix = MatrixTemplate<double>;

constexpr double PI = 3.141592653589793;

Matrix FromRows(const std::vector<std::vector<double>>& rows) {
    Matrix m(static_cast<int>(rows.size()), static_cast<int>(rows[0].size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        for (size_t j = 0; j < rows[i].size(); ++j) m.SetValue(i, j, rows[i][j]);
    }
    return m;
}

// Laplace expansion along the first row, independent of the permutation code.
double BruteDeterminant(const std::vector<std::vector<double>>& a) {
    const size_t n = a.size();
    if (n == 1) return a[0][0];
    double sum = 0.0;
    for (size_t col = 0; col < n; ++col) {
        std::vector<std::vector<double>> minor;
        for (size_t i = 1; i < n; ++i) {
            std::vector<double> row;
            for (size_t j = 0; j < n; ++j) {
                if (j != col) row.push_back(a[i][j]);
            }
            minor.push_back(row);
        }
        sum += (col % 2 == 0 ? 1.0 : -1.0) * a[0][col] * BruteDeterminant(minor);
    }
    return sum;
}

// A random matrix near a scaled identity: well conditioned, positive determinant.
std::vector<std::vector<double>> RandomRows(std::mt19937& generator, int n) {
    std::uniform_real_distribution<double> value(-0.4, 0.4);
    std::vector<std::vector<double>> rows(n, std::vector<double>(n));
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) rows[i][j] = value(generator) + (i == j ? 2.0 : 0.0);
    }
    return rows;
}

}  // namespace

TEST(MatrixTemplate, ConstructionAndSizes) {
    Matrix square(3, 3);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) EXPECT_EQ(square.Get(i, j), i == j ? 1.0 : 0.0);
    }
    EXPECT_EQ(Matrix(3, 1).GetTypeStr(), "MatrixTemplate<X>");

    Matrix tiny(2, 2);
    tiny.SetDim(0, -3);
    EXPECT_EQ(tiny.GetDim(1), 1);
    EXPECT_EQ(tiny.GetDim(2), 1);
    EXPECT_EQ(tiny.GetDim(3), -1);

    // Same size: contents stay. UpdateDim keeps old cells and puts 1 on new diagonal cells.
    Matrix m = FromRows({{1, 2}, {3, 4}});
    m.SetDim(2, 2);
    EXPECT_EQ(m.Get(1, 0), 3.0);
    m.UpdateDim(3, 3);
    EXPECT_EQ(m.Get(1, 1), 4.0);
    EXPECT_EQ(m.Get(2, 2), 1.0);
    EXPECT_EQ(m.Get(2, 0), 0.0);
    m.SetDim(1, 3);
    EXPECT_EQ(m.Get(0, 0), 0.0);

    // SetValues makes a column of the right count.
    m.SetValues(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(m.GetDim(1), 4);
    EXPECT_EQ(m.GetDim(2), 1);
    EXPECT_FALSE(Matrix(2, 3).SetIdentity());
}

TEST(MatrixTemplate, OutOfRangeAccessAndBuffers) {
    Matrix m(2, 2);
    double& wrong = m.Get(7);
    EXPECT_EQ(wrong, -1.0);
    wrong = 42.0;  // only the error cell is hurt
    EXPECT_EQ(m.Get(-1, 0), 42.0);
    EXPECT_EQ(m.Get(0, 0), 1.0);
    EXPECT_FALSE(m.SetValue(4, 1.0));
    EXPECT_FALSE(m.SetValue(0, 2, 1.0));

    // The two buffers are independent; SetZero clears both and keeps the selection.
    m.Transformed(true);
    EXPECT_EQ(m.Get(0, 0), 0.0);
    m.SetValue(0, 0, 5.0);
    m.Transformed(false);
    EXPECT_EQ(m.Get(0, 0), 1.0);
    m.Transformed(true);
    m.SetZero();
    EXPECT_TRUE(m.IsTransformed());
    m.Transformed(false);
    EXPECT_EQ(m.Get(1, 1), 0.0);

    // Copy takes the selection and only the active buffer.
    Matrix source = FromRows({{1, 2}, {3, 4}});
    source.Transformed(true);
    source.SetValue(0, 0, 9.0);
    Matrix copy(2, 2);
    copy.Copy(source);
    EXPECT_TRUE(copy.IsTransformed());
    EXPECT_EQ(copy.Get(0, 0), 9.0);
    copy.Transformed(false);
    EXPECT_EQ(copy.Get(0, 0), 1.0);  // its own plain buffer, untouched
}

TEST(MatrixTemplate, LengthNormaliseAndProducts) {
    Matrix v(3, 1);
    v.SetValues(3.0, 0.0, 4.0);
    EXPECT_DOUBLE_EQ(v.GetLength(), 5.0);
    v.SetLength(10.0);
    EXPECT_DOUBLE_EQ(v.Get(2), 8.0);
    v.SetLength(0.0);
    EXPECT_EQ(v.Get(0), 0.0);

    // A zero matrix cannot be normalised and stays zero.
    Matrix zero(3, 1);
    EXPECT_FALSE(zero.Normalise());
    EXPECT_EQ(zero.Get(1), 0.0);
    EXPECT_FALSE(std::isnan(zero.Get(0)));

    Matrix a(3, 1), b(3, 1), wide(4, 1);
    a.SetValues(1.0, 0.0, 0.0);
    b.SetValues(0.0, 2.0, 0.0);
    // Mismatched sizes give -1.
    EXPECT_EQ(a.Dot(wide), -1.0);
    EXPECT_EQ(a.DotDiff(wide, a), -1.0);
    EXPECT_DOUBLE_EQ(a.diff(b), std::sqrt(5.0));
    EXPECT_DOUBLE_EQ(a.DotDiff(a, b), 1.0);

    // Angles in the system's degrees; Angle(a, b) is measured at this point.
    EXPECT_DOUBLE_EQ(a.Angle(b), 0.5 * PI * DEGREES_PER_RADIAN);
    Matrix minusA(3, 1);
    minusA.SetValues(-3.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(a.Angle(minusA), 180.0 * PI / 3.1412459);
    Matrix corner(3, 1);
    corner.SetValues(1.0, 2.0, 0.0);
    EXPECT_NEAR(corner.Angle(a, b), 90.0 * PI / 3.1412459, 1e-9);
    EXPECT_EQ(corner.DiffDot(a, b), 0.0);

    Matrix cross(1, 1);
    EXPECT_TRUE(cross.SetCross(a, b));
    EXPECT_EQ(cross.GetDim(1), 3);
    EXPECT_DOUBLE_EQ(cross.Get(2), 2.0);
    EXPECT_FALSE(cross.SetCross(a, wide));

    a.PlusProd(b, 0.5);
    a -= b;
    a *= 3.0;
    EXPECT_DOUBLE_EQ(a.Get(1), -3.0);
}

TEST(MatrixTemplate, MultiplicationAndTranspose) {
    Matrix a = FromRows({{1, 2, 3}, {4, 5, 6}});
    Matrix b = FromRows({{1, 0}, {0, 1}, {2, 2}});
    Matrix product(a);
    product *= b;
    ASSERT_EQ(product.GetDim(1), 2);
    ASSERT_EQ(product.GetDim(2), 2);
    EXPECT_EQ(product.Get(0, 0), 7.0);
    EXPECT_EQ(product.Get(1, 1), 17.0);
    EXPECT_EQ(product.MultiplyFailed(), 0);

    // Premultiplying: b * a is 3 by 3.
    Matrix pre(a);
    pre ^= b;
    ASSERT_EQ(pre.GetDim(1), 3);
    EXPECT_EQ(pre.Get(2, 2), 18.0);

    // Mismatched inner sizes: no product; the matrix takes the scratch's previous result
    // (its own value after the last product) and the mark of failure.
    Matrix victim = FromRows({{1, 2}, {3, 4}});
    victim *= product;
    EXPECT_EQ(victim.Get(0, 0), 1 * 7.0 + 2 * 16.0);
    victim.SetValue(0, 0, -100.0);
    Matrix mismatched(3, 1);
    victim *= mismatched;
    EXPECT_EQ(victim.MultiplyFailed(), 1);
    EXPECT_EQ(victim.GetDim(1), 2);
    EXPECT_EQ(victim.GetDim(2), 2);
    EXPECT_EQ(victim.Get(0, 0), 39.0);
    victim *= product;
    EXPECT_EQ(victim.MultiplyFailed(), 0);

    Matrix t = FromRows({{1, 2, 3}});
    t.Transpose();
    EXPECT_EQ(t.GetDim(1), 3);
    EXPECT_EQ(t.Get(2, 0), 3.0);
}

TEST(MatrixTemplate, DeterminantAgainstCofactorExpansion) {
    LogCapture log;
    Matrix single(1, 1);
    single.SetValue(0, 5.0);
    EXPECT_EQ(single.Determinant(), 0.0);
    EXPECT_TRUE(log.Contains("MatrixTemplate<X>::Determinant() - dim1 = dim2 = 1\n"));
    EXPECT_EQ(Matrix(2, 3).Determinant(), 0.0);
    EXPECT_TRUE(log.Contains("MatrixTemplate<X>::Determinant() - dim1 != dim2\n"));

    std::mt19937 generator(11);
    std::uniform_real_distribution<double> value(-3.0, 3.0);
    for (int n = 2; n <= 4; ++n) {
        for (int trial = 0; trial < 20; ++trial) {
            std::vector<std::vector<double>> rows(n, std::vector<double>(n));
            for (auto& row : rows) {
                for (double& x : row) x = value(generator);
            }
            Matrix m = FromRows(rows);
            EXPECT_NEAR(m.Determinant(), BruteDeterminant(rows), 1e-9);
            // Each cofactor is the unsigned minor.
            const int r = trial % n, c = (trial / n) % n;
            std::vector<std::vector<double>> minor;
            for (int i = 0; i < n; ++i) {
                if (i == r) continue;
                std::vector<double> row;
                for (int j = 0; j < n; ++j) {
                    if (j != c) row.push_back(rows[i][j]);
                }
                minor.push_back(row);
            }
            EXPECT_NEAR(m.Cofactor(r, c), BruteDeterminant(minor), 1e-9);
        }
    }
    EXPECT_TRUE(log.Contains("detPiece = "));
    EXPECT_TRUE(log.Contains("cof = "));
}

TEST(MatrixTemplate, InvertWithItsRules) {
    std::mt19937 generator(5);
    for (int n = 3; n <= 4; ++n) {
        for (int trial = 0; trial < 10; ++trial) {
            const auto rows = RandomRows(generator, n);
            Matrix a = FromRows(rows);
            Matrix inverse = FromRows(rows);
            ASSERT_TRUE(inverse.Invert());
            a *= inverse;
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < n; ++j) EXPECT_NEAR(a.Get(i, j), i == j ? 1.0 : 0.0, 1e-12);
            }
        }
    }

    // A 2 by 2 inverse comes out transposed: [[a, b], [c, d]] gives [[d, -c], [-b, a]] / det.
    Matrix two = FromRows({{2, 1}, {3, 4}});
    ASSERT_TRUE(two.Invert());
    EXPECT_DOUBLE_EQ(two.Get(0, 0), 4.0 / 5.0);
    EXPECT_DOUBLE_EQ(two.Get(0, 1), -3.0 / 5.0);
    EXPECT_DOUBLE_EQ(two.Get(1, 0), -1.0 / 5.0);
    EXPECT_DOUBLE_EQ(two.Get(1, 1), 2.0 / 5.0);

    // Determinant -2 (and anything up to 0.0001) fails and leaves the matrix alone.
    LogCapture log;
    Matrix negative = FromRows({{1, 0, 0}, {0, -2, 0}, {0, 0, 1}});
    EXPECT_FALSE(negative.Invert());
    EXPECT_EQ(negative.Get(1, 1), -2.0);
    EXPECT_TRUE(log.Contains("determ <= 0.0001\n"));
    EXPECT_TRUE(log.Contains("MatrixTemplate<X>::Invert() .. finish - fail\n"));
    Matrix single(1, 1);
    single.SetValue(0, 3.0);
    EXPECT_FALSE(single.Invert());
}

TEST(MatrixTemplate, CheckEqIsNotAPlainComparison) {
    Matrix a(3, 1), b(3, 1);
    a.SetValues(1.0, 2.0, 3.0);
    b.SetValues(1.0, 2.0, 3.0);
    // The walk reads the buffer opposite to the active one: both plain buffers written,
    // so it compares the untouched transformed buffers, which agree.
    EXPECT_TRUE(a.CheckEq(&b));
    a.Transformed(true);
    b.Transformed(true);
    EXPECT_TRUE(a.CheckEq(&b));
    b.Transformed(false);
    b.SetValue(0, 9.0);
    b.Transformed(true);
    EXPECT_FALSE(a.CheckEq(&b));  // now the plain buffers are walked, and they differ

    // Any even dimension makes them unequal, even for identical matrices.
    Matrix c(2, 2), d(2, 2);
    EXPECT_FALSE(c.CheckEq(&d));
    // The other's dimensions are taken over.
    Matrix e(3, 3), f(1, 1);
    f.CheckEq(&e);
    EXPECT_EQ(f.GetDim(1), 3);
    EXPECT_EQ(f.GetDim(2), 3);
    EXPECT_FALSE(a.CheckEq(static_cast<Matrix*>(nullptr)));
}

TEST(MatrixTemplate, SolidAngleInBothFamilies) {
    // The octant seen from its corner: the tangent of half its solid angle (pi / 2) is 1.
    Matrix a(3, 1), b(3, 1), c(3, 1);
    a.SetValues(2.0, 0.0, 0.0);
    b.SetValues(0.0, 3.0, 0.0);
    c.SetValues(0.0, 0.0, 1.0);
    EXPECT_DOUBLE_EQ(Matrix::GetSolidAngle(a, b, c), 1.0);
    const VectorQUICK qa(1, 0, 0), qb(0, 1, 0), qc(1, 1, 1);
    const double quick = Matrix::GetSolidAngle(qa, qb, qc);
    a.SetValues(1.0, 0.0, 0.0);
    b.SetValues(0.0, 1.0, 0.0);
    c.SetValues(1.0, 1.0, 1.0);
    EXPECT_DOUBLE_EQ(Matrix::GetSolidAngle(a, b, c), quick);
    // Against the solid angle of the triangle by the formula of Van Oosterom and Strackee.
    const double s3 = std::sqrt(3.0);
    EXPECT_NEAR(quick, 1.0 / (s3 + 0 + 1 + 1), 1e-12);
}
