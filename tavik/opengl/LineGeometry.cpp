#include <tavik/opengl/LineGeometry.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineAdjacency.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/RectangleCorners.h>
#include <tavik/opengl/RunningLength.h>

#include <algorithm>
#include <numeric>

namespace Tavik::OpenGL {

namespace {

using Math::Vector2;
using Math::Vector3;
using Math::Vector4;

Vector3<float> toVertex(Vector2<float> point)
{
    return {point.x, point.y, 0.0f};
}

Vector3<float> toVertex(Vector3<float> point)
{
    return point;
}

Vector3<float> toVertex(Vector4<float> point)
{
    return {point.x, point.y, point.z};
}

} // namespace

void LineGeometry::addPoints(const std::vector<Vector2<float>>& points)
{
    appendPoints(points);
}

void LineGeometry::addPoints(const std::vector<Vector3<float>>& points)
{
    appendPoints(points);
}

void LineGeometry::addPoints(const std::vector<Vector4<float>>& points)
{
    appendPoints(points);
}

void LineGeometry::endStrip()
{
    mIndices.push_back(mSeparator);
    mIsDirty = true;
}

void LineGeometry::setRect(unsigned int width, unsigned int height)
{
    const auto corners = rectangleCorners(width, height);
    mVertices.assign(corners.begin(), corners.end());
    mIsDirty = true;
}

void LineGeometry::clear()
{
    mVertices.clear();
    mColors.clear();
    mIndices.clear();
    mNextIndex = 0;
    mIsDirty = true;
}

void LineGeometry::calcPositions()
{
    calcRunningLength(mVertices, MatrixGet(), GlHandler::instance().viewPort(), mPositions);
}

void LineGeometry::expandIndices()
{
    expandAdjacency(mIndices, mVertices.size(), mSeparator, mSpareIndices);
    mIndices.swap(mSpareIndices);
}

void LineGeometry::dropStrayIndices()
{
    const std::size_t vertexCount = mVertices.size();
    const auto isStray = [vertexCount](std::uint32_t index) { return index >= vertexCount; };
    std::replace_if(mIndices.begin(), mIndices.end(), isStray, mSeparator);
}

template <typename Point>
void LineGeometry::appendPoints(const std::vector<Point>& points)
{
    // Resizing grows the memory by factors, reserving would grow it by each strip.
    const std::size_t vertexCount = mVertices.size();
    mVertices.resize(vertexCount + points.size());
    std::transform(points.begin(), points.end(), mVertices.data() + vertexCount, [](Point p) { return toVertex(p); });

    const std::size_t indexCount = mIndices.size();
    mIndices.resize(indexCount + points.size());
    std::iota(mIndices.begin() + static_cast<std::ptrdiff_t>(indexCount), mIndices.end(), mNextIndex);
    mNextIndex += static_cast<std::uint32_t>(points.size());
    mIsDirty = true;
}

} // namespace Tavik::OpenGL
