#include <tavik/opengl/TriangleStrip.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/RectangleCorners.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <algorithm>
#include <limits>

namespace Tavik::OpenGL {

namespace {

constexpr const char* InitWhere = "void Tavik::OpenGL::TriangleStrip::init()";
constexpr const char* SetDataWhere = "void Tavik::OpenGL::TriangleStrip::setData()";
constexpr const char* RenderWhere = "void Tavik::OpenGL::TriangleStrip::render()";

// As uploadAttribute() does, with a check of each step.
template <typename Value>
void uploadChecked(BufferObject& buffer, const std::vector<Value>& values, std::size_t vertexCount,
                   unsigned int location, int components, const char* where)
{
    if (values.empty() || values.size() != vertexCount) {
        VertexArray::disableAttribute(location);
        return;
    }
    buffer.bindVertices();
    GlHandler::checkError("glBindBuffer", where);
    buffer.storeVertices(values.data(), values.size() * sizeof(Value));
    GlHandler::checkError("glBufferData", where);
    VertexArray::setFloatAttribute(location, components);
}

} // namespace

void TriangleStrip::addVertex(Math::Vector3<float> vertex)
{
    mVertices.push_back(vertex);
    mIsDirty = true;
}

void TriangleStrip::addVertex(Math::Vector3<float> vertex, Math::Vector4<float> color)
{
    addVertex(vertex);
    mColors.push_back(color);
}

void TriangleStrip::clearVertex()
{
    mVertices.clear();
    mColors.clear();
    mIsDirty = true;
}

void TriangleStrip::clear()
{
    mVertexArray.clear();
    mVertexBuffer.clear();
    mColorBuffer.clear();
}

void TriangleStrip::setRect(unsigned int width, unsigned int height)
{
    const auto corners = rectangleCorners(width, height);
    mVertices.assign(corners.begin(), corners.end());
    mIsDirty = true;
}

void TriangleStrip::init()
{
    upload(InitWhere);
}

void TriangleStrip::setData()
{
    upload(SetDataWhere);
    mIsDirty = false;
}

void TriangleStrip::upload(const char* where)
{
    if (!GlHandler::instance().isLoaded()) {
        return;
    }
    GlHandler::clearError();
    mVertexArray.bind();
    uploadChecked(mVertexBuffer, mVertices, mVertices.size(), VertexLocation, 3, where);
    uploadChecked(mColorBuffer, mColors, mVertices.size(), ColorLocation, 4, where);
    VertexArray::unbind();
}

void TriangleStrip::render()
{
    GlHandler::clearError();
    if (mVertices.size() < 2 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mVertexArray.name() == 0) {
        init();
        mIsDirty = false;
    } else if (mIsDirty) {
        setData();
    }
    activateFill(mUseMultiColor && hasColors() ? VertexColorProgram : PatternProgram, mColor, mPattern);
    mVertexArray.bind();
    GlHandler::checkError("glBindVertexArray", RenderWhere);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    GlHandler::checkError("glBlendFunc", RenderWhere);
    glEnable(GL_BLEND);
    GlHandler::checkError("glEnable", RenderWhere);
    MatrixActivate();
    GlHandler::checkError("MatrixActivate", RenderWhere);
    const auto count = std::min<std::size_t>(mVertices.size(), std::numeric_limits<GLsizei>::max());
    glDrawArrays(GL_TRIANGLE_STRIP, 0, static_cast<GLsizei>(count));
    GlHandler::checkError("glDrawArrays", RenderWhere);
    VertexArray::unbind();
    GlHandler::checkError("glBindVertexArray", RenderWhere);
    GlHandler::instance().deactivateShader();
    GlHandler::checkError("TriangleStrip", RenderWhere);
}

} // namespace Tavik::OpenGL
