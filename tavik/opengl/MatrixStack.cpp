#include <tavik/opengl/MatrixStack.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

#include <cmath>
#include <string>

namespace Tavik::OpenGL {

namespace {

using Math::Matrix4;

constexpr unsigned int Depth = 32;
constexpr double RadiansPerDegree = 0.017453292519943295;

Matrix4<float> matrices[Depth];
unsigned int topIndex = 0;

Matrix4<float>& current()
{
    return matrices[topIndex];
}

// Turns by angle (radians) about the axis a, which is used as it is.
Matrix4<float> rotation(double angle, Math::Vector3<double> a)
{
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    const double t = 1.0 - c;
    // clang-format off
    const double elements[Matrix4<float>::ElementCount] = {
        a.x * a.x * t + c,       a.x * a.y * t + a.z * s, a.x * a.z * t - a.y * s, 0.0,
        a.x * a.y * t - a.z * s, a.y * a.y * t + c,       a.y * a.z * t + a.x * s, 0.0,
        a.x * a.z * t + a.y * s, a.y * a.z * t - a.x * s, a.z * a.z * t + c,       0.0,
        0.0,                     0.0,                     0.0,                     1.0,
    };
    // clang-format on
    Matrix4<float> result;
    for (std::size_t i = 0; i < Matrix4<float>::ElementCount; ++i) {
        result[i] = static_cast<float>(elements[i]);
    }
    return result;
}

} // namespace

void MatrixSet(const Matrix4<float>& m)
{
    current() = m;
}

void MatrixActivate()
{
    static const std::string Name = "mvp";
    ShaderProgram& program = GlHandler::instance().activeShader();
    if (!isOpenGlLoaded()) {
        return;
    }
    GlHandler::clearError();
    glUniformMatrix4fv(program.uniformLocation(Name), 1, GL_FALSE, current().data());
    GlHandler::checkError("glUniformMatrix4fv", "void Tavik::OpenGL::MatrixActivate()");
}

void MatrixPush()
{
    if (topIndex + 1 < Depth) {
        matrices[topIndex + 1] = matrices[topIndex];
        ++topIndex;
    }
}

void MatrixPop()
{
    if (topIndex > 0) {
        --topIndex;
    }
}

void MatrixLoadIdent()
{
    current().setIdentity();
}

void MatrixTranslate(double x, double y, double z)
{
    current().translate(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

void MatrixScale(double x, double y, double z)
{
    const float factors[] = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    for (std::size_t i = 0; i < 12; ++i) {
        current()[i] *= factors[i / 4];
    }
}

void MatrixRotate(double angle, double x, double y, double z)
{
    const Math::Vector3<double> axis(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    MatrixMult(rotation(angle * RadiansPerDegree, axis));
}

void MatrixMult(const Matrix4<float>& m)
{
    current() = current() * m;
}

Matrix4<float> MatrixGet()
{
    return current();
}

} // namespace Tavik::OpenGL
