#include <tavik/opengl/Polygon.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <algorithm>
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
    const std::vector<Math::Vector3<float>>& vertices = polygon.vertices();
    if (first == 0 && !vertices.empty()) {
        mLevel = vertices.front().z;
    }
    mIsLevel = mIsLevel && std::all_of(vertices.begin(), vertices.end(),
                                       [this](const Math::Vector3<float>& v) { return v.z == mLevel; });
    mVertices.append(std::move(polygon).vertices());
}

void Polygon::clearVertex()
{
    mVertices.clear();
    mDrawCommands.clear();
    mIsLevel = true;
}

void Polygon::setData()
{
    mVertices.upload();
    mergeCommands();
}

// One colour blends to the same picture in any order, unless the depth test lets the order decide what is seen.
void Polygon::mergeCommands()
{
    std::vector<DrawCommand> commands = mDrawCommands;
    if (mIsLevel) {
        std::stable_sort(commands.begin(), commands.end(),
                         [](const DrawCommand& a, const DrawCommand& b) { return a.mode < b.mode; });
    }
    mBatches.clear();
    mFirstVertices.clear();
    mVertexCounts.clear();
    for (const DrawCommand& command : commands) {
        if (mBatches.empty() || mBatches.back().mode != command.mode) {
            mBatches.push_back({command.mode, mFirstVertices.size(), 0});
        }
        ++mBatches.back().commandCount;
        mFirstVertices.push_back(static_cast<int>(command.firstVertex));
        mVertexCounts.push_back(static_cast<int>(command.vertexCount));
    }
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
    for (const Batch& batch : mBatches) {
        glMultiDrawArrays(batch.mode, mFirstVertices.data() + batch.firstCommand,
                          mVertexCounts.data() + batch.firstCommand, batch.commandCount);
    }
    GlHandler::checkError("Polygon", Where);
    endFill();
}

} // namespace Tavik::OpenGL
