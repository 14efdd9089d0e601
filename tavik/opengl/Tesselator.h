#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>

#include <array>
#include <cstddef>
#include <forward_list>
#include <utility>
#include <vector>

namespace Tavik::OpenGL {

/// Cuts an area into triangles, for Polygon to draw.
///
///     Tesselator tesselator;
///     for (const auto& corner : lake) {
///         tesselator.addVertex(corner);
///     }
///     tesselator.beginContour();         // an island in it: the other way round than the shore
///     for (const auto& corner : island) {
///         tesselator.addVertex(corner);
///     }
///     polygon.addTessPolygon(tesselator.tesselate());
///
/// The outline is one contour or several, each closed by itself; it may be concave and cross itself. What the contours
/// wind around a number of times other than zero is inside: a contour inside another one cuts a hole when it runs the
/// other way round, and is part of the area when it runs the same way. Corners should lie in one plane, any plane.
///
/// Corners that are NaN or infinite are left out. Contours of fewer than three corners enclose nothing.
/// An outline that would take minutes, because some hundred thousand of its edges cross, touch or lie on each other, or
/// some thousand of a contour with tens of thousands, is not cut at all.
///
/// Needs no OpenGL context. The working state is shared by all tesselators: only one of them may be at work at a time,
/// so keep them to one thread.
class TAVIK_API Tesselator
{
public:
    /// The triangles of an area, as a list of primitives.
    class TessPolygon
    {
    public:
        /// Vertices that OpenGL draws as one.
        struct Primitive
        {
            unsigned int mode;          ///< OpenGL's GL_TRIANGLES (4), GL_TRIANGLE_STRIP (5) or GL_TRIANGLE_FAN (6)
            unsigned int startPosition; ///< where its vertices begin in vertices()
            unsigned int vertexCount;   ///< how many they are
        };

        /// @{
        /// What is drawn, in this order.
        const std::vector<Primitive>& primitives() const& { return mPrimitives; }
        std::vector<Primitive> primitives() && { return std::move(mPrimitives); }
        /// @}

        /// @{
        /// The vertices of all primitives, one primitive after the other.
        const std::vector<Math::Vector3<float>>& vertices() const& { return mVertices; }
        std::vector<Math::Vector3<float>> vertices() && { return std::move(mVertices); }
        /// @}

    private:
        friend class Tesselator;

        std::vector<Primitive> mPrimitives;
        std::vector<Math::Vector3<float>> mVertices;
    };

    /// @{
    /// Append a corner to the contour; missing z is 0, w is dropped.
    void addVertex(Math::Vector2<float> vertex) { addVertex(Math::Vector3<float>(vertex.x, vertex.y, 0.0f)); }
    void addVertex(Math::Vector3<float> vertex);
    void addVertex(Math::Vector4<float> vertex) { addVertex(Math::Vector3<float>(vertex.x, vertex.y, vertex.z)); }
    /// @}

    /// Ends the contour: the vertices that follow make another one.
    void beginContour() { mContourStarts.push_back(mVertices.size()); }

    /// Removes all vertices and contours.
    void clearVertex();

    /// Cuts the area that the vertices enclose into triangles; the vertices stay.
    /// @return no primitives for an outline that encloses nothing or cannot be cut
    TessPolygon tesselate();

    /// @cond
    /// What tesselate() is told by its machinery; for it alone.
    /// @param mode  OpenGL's primitive
    static void beginCB(unsigned int mode);
    /// @param xyz  a vertex of the primitive that began last
    static void vertexCB(double* xyz);
    /// @param coords  three coordinates where edges meet
    /// @param neighbours,weights  the four vertices around, which are not used
    /// @param out  receives a vertex there, which lives until the tessellation ends
    static void combineCB(double* coords, double** neighbours, float* weights, double** out);
    static void endCB();
    static void errorCB(unsigned int error);
    /// @endcond

private:
    using Corner = std::array<double, 3>;

    std::vector<Math::Vector3<float>> mVertices;
    std::vector<std::size_t> mContourStarts; // of all contours but the first

    static TessPolygon mTessPolygon;
    static std::forward_list<Corner> mAllocatedVertices;
    static unsigned int mStartPos;
};

} // namespace Tavik::OpenGL
