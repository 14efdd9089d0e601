#include <tavik/opengl/Circle.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::Circle::render()";
constexpr double RadiansPerDegree = 0.017453292519943295;

} // namespace

void Circle::setCircle(double radius, unsigned int segments)
{
    // The comparison is false for NaN, too.
    if (segments == 0 || !(std::fabs(radius) <= std::numeric_limits<float>::max())) {
        return;
    }
    segments = std::min(segments, MaximumSegments);
    mVertices.add({0.0f, 0.0f, 0.0f});
    for (unsigned int i = 0; i <= segments; ++i) {
        const double angle = 360.0 / segments * i * RadiansPerDegree;
        mVertices.add(
            {static_cast<float>(radius * std::sin(angle)), static_cast<float>(radius * std::cos(angle)), 0.0f});
    }
}

void Circle::render()
{
    GlHandler::clearError();
    if (mVertices.size() < 3 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mVertices.needsUpload()) {
        setData();
    }
    GlHandler::checkError("Circle", Where); // setting uniforms would drop the errors of the upload
    activateFill(mPattern.isUsed() ? PatternProgram : OneColorProgram, mColor, mPattern);
    mVertices.bind();
    enableBlending();
    MatrixActivate();
    mVertices.draw(GL_TRIANGLE_FAN);
    GlHandler::checkError("Circle", Where);
    endFill();
}

} // namespace Tavik::OpenGL
