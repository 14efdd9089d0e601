#include <tavik/opengl/Polygon.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <utility>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::Polygon::render()";

} // namespace

void Polygon::addTessPolygon(Tesselator::TessPolygon polygon)
{
    const auto first = static_cast<unsigned int>(mVertices.size());
    for (const Tesselator::TessPolygon::Primitive& primitive : polygon.primitives()) {
        mDrawCommands.push_back({primitive.mode, first + primitive.startPosition, primitive.vertexCount});
    }
    mVertices.append(std::move(polygon).takeVertices());
}

void Polygon::clearVertex()
{
    mVertices.clear();
    mDrawCommands.clear();
}

void Polygon::setData()
{
    mVertices.upload();
    mVertices.setUploaded();
}

void Polygon::render()
{
    GlHandler::clearError();
    if (mDrawCommands.empty() || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mVertices.needsUpload()) {
        setData();
    }
    GlHandler::checkError("Polygon", Where); // setting uniforms would drop the errors of the upload
    activateFill(PatternProgram, mColor, mPattern);
    mVertices.bind();
    enableBlending();
    MatrixActivate();
    for (const DrawCommand& command : mDrawCommands) {
        glDrawArrays(command.mode, static_cast<GLint>(command.firstVertex), static_cast<GLsizei>(command.vertexCount));
    }
    GlHandler::checkError("Polygon", Where);
    endFill();
}

} // namespace Tavik::OpenGL
