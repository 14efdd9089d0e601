#include <tavik/opengl/LineLoops.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <cmath>

namespace Tavik::OpenGL {

namespace {

constexpr LineKind Kind = {"LineLoops", "void Tavik::OpenGL::LineLoops::render(double)", GL_LINE_STRIP_ADJACENCY,
                           LineLoops::LoopSeparator};
constexpr double ScaleTolerance = 0.001;

} // namespace

void LineLoops::addLineLoop(const std::vector<Math::Vector2<float>>& points)
{
    appendLoop(points);
}

void LineLoops::addLineLoop(const std::vector<Math::Vector3<float>>& points)
{
    appendLoop(points);
}

void LineLoops::addLineLoop(const std::vector<Math::Vector4<float>>& points)
{
    appendLoop(points);
}

void LineLoops::clearVertex()
{
    mGeometry.clear();
    mIsClosed = false;
}

void LineLoops::init()
{
    mBuffers.upload(mGeometry);
}

void LineLoops::setData()
{
    if (!mIsClosed && !mGeometry.vertices().empty()) {
        mGeometry.addVertex(mGeometry.vertices().front());
        mIsClosed = true;
    }
    mGeometry.calcPositions();
    mGeometry.expandIndices();
    mBuffers.upload(mGeometry);
    mGeometry.setUploaded();
}

void LineLoops::calcPositions()
{
    mGeometry.calcPositions();
    mBuffers.uploadPositions(mGeometry);
}

void LineLoops::render(double scale)
{
    GlHandler::clearError();
    if (mGeometry.indices().size() < 2 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mGeometry.isDirty()) {
        setData();
    } else {
        if (!mBuffers.exist()) {
            init();
        }
        if (mStyle.stipple != 0 && std::fabs(scale - mScale) > ScaleTolerance) {
            mScale = scale;
            calcPositions();
        }
    }
    drawLines(Kind, PolylineProgram, mStyle, true, mBuffers, -1, mGeometry.indices().size());
}

template <typename Point>
void LineLoops::appendLoop(const std::vector<Point>& points)
{
    if (points.empty()) {
        return;
    }
    const std::size_t first = mGeometry.vertices().size();
    mGeometry.addPoints(points);
    mGeometry.addVertex(mGeometry.vertices()[first]);
    mGeometry.endStrip();
    mIsClosed = true;
}

} // namespace Tavik::OpenGL
