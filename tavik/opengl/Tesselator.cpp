#include <tavik/opengl/Tesselator.h>

#include <tavik/opengl/OutlineComplexity.h>

#include <GL/glu.h>

#include <cmath>
#include <memory>
#include <utility>

namespace Tavik::OpenGL {

namespace {

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
    auto nextContour = mContourStarts.begin();
    gluTessBeginPolygon(tess.get(), nullptr);
    gluTessBeginContour(tess.get());
    for (std::size_t i = 0; i < mVertices.size(); ++i) {
        for (; nextContour != mContourStarts.end() && *nextContour <= i; ++nextContour) {
            gluTessEndContour(tess.get());
            gluTessBeginContour(tess.get());
        }
        corners[i] = {mVertices[i].x, mVertices[i].y, mVertices[i].z};
        gluTessVertex(tess.get(), corners[i].data(), corners[i].data());
    }
    gluTessEndContour(tess.get());
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
