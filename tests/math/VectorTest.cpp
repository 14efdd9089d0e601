#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector2.h>

#include <gtest/gtest.h>

using namespace Tavik::Math;

namespace {

Matrix4<double> countingMatrix()
{
    Matrix4<double> m;
    for (std::size_t i = 0; i < Matrix4<double>::ElementCount; ++i) {
        m[i] = static_cast<double>(i + 1);
    }
    return m;
}

} // namespace

TEST(Vector2, CrossIsPositiveCounterClockwise)
{
    const Vector2<double> east(1.0, 0.0);
    const Vector2<double> north(0.0, 1.0);
    EXPECT_EQ(east.cross(north), 1.0);
    EXPECT_EQ(north.cross(east), -1.0);
    EXPECT_EQ(Vector2<double>(2.0, 3.0).dot({4.0, 5.0}), 23.0);
    EXPECT_EQ(Vector2<double>(3.0, 4.0).length(), 5.0);
    EXPECT_EQ(Vector2<double>(3.0, 4.0).normalized(), Vector2<double>(0.6, 0.8));
}

TEST(Vector2, NormalizingZeroLengthGivesNaN)
{
    const Vector2<float> v = Vector2<float>().normalized();
    EXPECT_TRUE(std::isnan(v.x));
    EXPECT_TRUE(std::isnan(v.y));
}

TEST(Matrix4, IdentityLeavesMatricesAndVerticesUnchanged)
{
    const Matrix4<double> m = countingMatrix();
    const Matrix4<double> identity;
    EXPECT_EQ(m * identity, m);
    EXPECT_EQ(identity * m, m);
    EXPECT_EQ(identity * Vector4<double>(1.0, 2.0, 3.0, 4.0), Vector4<double>(1.0, 2.0, 3.0, 4.0));
}

TEST(Matrix4, ProductCombinesColumnsOfTheLeftFactor)
{
    const Matrix4<double> a = countingMatrix();
    Matrix4<double> b;
    b[4] = 2.0; // second column: twice the first column of a, plus its own second
    const Matrix4<double> product = a * b;
    EXPECT_EQ(product[4], 2.0 * 1.0 + 5.0);
    EXPECT_EQ(product[7], 2.0 * 4.0 + 8.0);
    EXPECT_EQ(product[0], 1.0);
}

TEST(Matrix4, TranslationAppliesToVerticesFirst)
{
    Matrix4<double> m;
    m[0] = 10.0; // scale x by ten
    m.translate(1.0, 2.0, 3.0);
    EXPECT_EQ(m[12], 10.0);
    EXPECT_EQ(m[13], 2.0);
    EXPECT_EQ(m[14], 3.0);
    EXPECT_EQ(m * Vector3<double>(1.0, 1.0, 1.0), Vector3<double>(20.0, 3.0, 4.0));

    Matrix4<double> first;
    Matrix4<double> second;
    first.translate(1.0, 2.0, 3.0);
    second.translate(10.0, 20.0, 30.0);
    const Matrix4<double> sum = first * second;
    EXPECT_EQ(sum * Vector3<double>(), Vector3<double>(11.0, 22.0, 33.0));
}
