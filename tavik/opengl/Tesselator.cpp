#include <tavik/opengl/Tesselator.h>

#include <tavik/opengl/OutlineComplexity.h>
#include <tavik/opengl/VectorProducts.h>

#include <GL/glu.h>

#include <cmath>
#include <memory>
#include <utility>

namespace Tavik::OpenGL {

namespace {

using Math::Vector3;
using Corner = std::array<double, 3>;

struct TessDeleter
{
    void operator()(GLUtesselator* tess) const { gluDeleteTess(tess); }
};

using TessPointer = std::unique_ptr<GLUtesselator, TessDeleter>;

template <typename Function>
void setCallback(GLUtesselator* tess, GLenum which, Function* function)
{
    gluTessCallback(tess, which, reinterpret_cast<_GLUfuncptr>(function));
}

// GLU calls with untyped vertices.
void vertexOfGlu(void* xyz)
{
    Tesselator::vertexCB(static_cast<double*>(xyz));
}

void combineOfGlu(double* coords, void** /*neighbours*/, float* weights, void** out)
{
    double* vertex = nullptr;
    Tesselator::combineCB(coords, nullptr, weights, &vertex);
    *out = vertex;
}

// Whether the corners, seen from the first one, come one after the other within half a turn: then the triangles between
// it and each two neighbours lie side by side.
bool isFan(const std::vector<Vector3<float>>& corners)
{
    if (corners.size() < 3) {
        return true;
    }
    const Vector3<double> first = difference(corners[1], corners[0]);
    const Vector3<double> normal = crossProduct(first, difference(corners[2], corners[0]));
    Vector3<double> previous = first;
    for (std::size_t i = 2; i < corners.size(); ++i) {
        const Vector3<double> direction = difference(corners[i], corners[0]);
        if (dotProduct(normal, crossProduct(first, direction)) <= 0.0 ||
            dotProduct(normal, crossProduct(previous, direction)) <= 0.0) {
            return false;
        }
        previous = direction;
    }
    return true;
}

// @param corners  room for the vertices as GLU wants them
void passContours(GLUtesselator* tess, const std::vector<Vector3<float>>& vertices,
                  const std::vector<std::size_t>& contourStarts, std::vector<Corner>& corners)
{
    const auto pass = [&](std::size_t i) {
        corners[i] = {vertices[i].x, vertices[i].y, vertices[i].z};
        gluTessVertex(tess, corners[i].data(), corners[i].data());
    };
    const auto nextContour = [tess] {
        gluTessEndContour(tess);
        gluTessBeginContour(tess);
    };
    gluTessBeginContour(tess);
    if (!isFan(vertices)) {
        // GLU takes a small outline of one contour for a fan, even if it winds around an area twice, which would then
        // be drawn twice. A contour of one corner in front of it keeps GLU from that.
        pass(0);
        nextContour();
    }
    auto contourStart = contourStarts.begin();
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        for (; contourStart != contourStarts.end() && *contourStart <= i; ++contourStart) {
            nextContour();
        }
        pass(i);
    }
    gluTessEndContour(tess);
}

} // namespace

Tesselator::TessPolygon Tesselator::mTessPolygon;
std::forward_list<Tesselator::Corner> Tesselator::mAllocatedVertices;
unsigned int Tesselator::mStartPos = 0;

void Tesselator::addVertex(Math::Vector3<float> vertex)
{
    if (std::isfinite(vertex.x) && std::isfinite(vertex.y) && std::isfinite(vertex.z)) {
        mVertices.push_back(vertex);
    }
}

void Tesselator::clearVertex()
{
    mVertices.clear();
    mContourStarts.clear();
}

Tesselator::TessPolygon Tesselator::tesselate()
{
    mTessPolygon = TessPolygon();
    mStartPos = 0;
    const TessPointer tess(isTooComplex(mVertices, mContourStarts) ? nullptr : gluNewTess());
    if (tess == nullptr) {
        return {};
    }
    gluTessProperty(tess.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    setCallback(tess.get(), GLU_TESS_COMBINE, combineOfGlu);
    setCallback(tess.get(), GLU_TESS_VERTEX, vertexOfGlu);
    setCallback(tess.get(), GLU_TESS_BEGIN, beginCB);
    setCallback(tess.get(), GLU_TESS_END, endCB);
    setCallback(tess.get(), GLU_TESS_ERROR, errorCB);

    mTessPolygon.mVertices.reserve(2 * mVertices.size()); // enough where no edges cross
    std::vector<Corner> corners(mVertices.size());        // GLU keeps their addresses until the end
    gluTessBeginPolygon(tess.get(), nullptr);
    passContours(tess.get(), mVertices, mContourStarts, corners);
    gluTessEndPolygon(tess.get());
    mAllocatedVertices.clear();
    return std::exchange(mTessPolygon, TessPolygon());
}

void Tesselator::beginCB(unsigned int mode)
{
    mTessPolygon.mPrimitives.push_back({mode, mStartPos, 0});
}

void Tesselator::vertexCB(double* xyz)
{
    if (xyz == nullptr || mTessPolygon.mPrimitives.empty()) {
        return;
    }
    mTessPolygon.mVertices.emplace_back(static_cast<float>(xyz[0]), static_cast<float>(xyz[1]),
                                        static_cast<float>(xyz[2]));
    ++mTessPolygon.mPrimitives.back().vertexCount;
    ++mStartPos;
}

void Tesselator::combineCB(double* coords, double** /*neighbours*/, float* /*weights*/, double** out)
{
    if (coords == nullptr || out == nullptr) {
        return;
    }
    mAllocatedVertices.push_front({coords[0], coords[1], coords[2]});
    *out = mAllocatedVertices.front().data();
}

void Tesselator::endCB() {}

void Tesselator::errorCB(unsigned int /*error*/) {}

} // namespace Tavik::OpenGL
