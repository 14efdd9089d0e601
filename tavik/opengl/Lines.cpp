#include <tavik/opengl/Lines.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/RectangleCorners.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <algorithm>
#include <limits>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::Lines::render()";

} // namespace

void Lines::addVertex(Math::Vector3<float> vertex)
{
    mVertices.push_back(vertex);
    mIsDirty = true;
}

void Lines::clearVertex()
{
    mVertices.clear();
    mIsDirty = true;
}

void Lines::clear()
{
    mVertexArray.clear();
    mVertexBuffer.clear();
}

void Lines::setRect(unsigned int width, unsigned int height)
{
    const auto corners = rectangleCorners(width, height);
    mVertices.assign(corners.begin(), corners.end());
    mIsDirty = true;
}

void Lines::init()
{
    mVertexArray.bind();
    mVertexBuffer.uploadVertices(mVertices.data(), mVertices.size() * sizeof(mVertices[0]));
    VertexArray::setFloatAttribute(VertexLocation, 3);
    VertexArray::unbind();
}

void Lines::setData()
{
    init();
    mIsDirty = false;
}

void Lines::render()
{
    GlHandler::clearError();
    if (mVertices.size() < 2 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mIsDirty || mVertexArray.name() == 0) {
        setData();
    }
    GlHandler::checkError("Lines", Where); // setting uniforms would drop the errors of the upload
    beginLines(SegmentProgram, mStyle, true);
    mVertexArray.bind();
    MatrixActivate();
    const auto count = std::min<std::size_t>(mVertices.size(), std::numeric_limits<int>::max());
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(count));
    GlHandler::checkError("Lines", Where);
    endLines();
}

} // namespace Tavik::OpenGL
