#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>

#include <cstdint>
#include <vector>

namespace Tavik::OpenGL {

/// Vertices and indices of polylines as the line drawables keep them; applications have no need of it.
///
/// Memory is kept when the contents go, so that a line that is rebuilt for every frame allocates nothing.
class TAVIK_API LineGeometry
{
public:
    /// @param separator  stands between the strips in the indices
    explicit LineGeometry(std::uint32_t separator) : mSeparator(separator) {}

    /// Appends a vertex, and its index, to the strip that is open.
    void addVertex(Math::Vector3<float> vertex)
    {
        mVertices.push_back(vertex);
        mIndices.push_back(mNextIndex++);
        mIsDirty = true;
    }

    /// The same with a colour.
    void addVertex(Math::Vector3<float> vertex, Math::Vector4<float> color)
    {
        addVertex(vertex);
        mColors.push_back(color);
    }

    /// Append vertices, and their indices, to the strip that is open; missing z is 0, w is dropped.
    void addPoints(const std::vector<Math::Vector2<float>>& points);
    void addPoints(const std::vector<Math::Vector3<float>>& points);
    void addPoints(const std::vector<Math::Vector4<float>>& points);

    void endStrip();

    /// Appends the points, whatever their kind, and ends the strip.
    template <typename Point>
    void addStrip(const std::vector<Point>& points)
    {
        addPoints(points);
        endStrip();
    }

    /// Replaces the vertices by (0, 0), (0, height), (width, 0), (width, height); leaves the indices alone.
    void setRect(unsigned int width, unsigned int height);

    /// Removes vertices, colours and indices.
    void clear();

    /// Fills positions(), from the current matrix and the view port.
    void calcPositions();

    /// Replaces the indices by those with adjacency; doing it twice doubles the ends of the strips twice.
    void expandIndices();

    /// Makes separators of the indices that lie beyond the vertices, so that nothing is ever read there.
    void dropStrayIndices();

    /// Whether there is one colour for each vertex.
    bool hasColors() const { return mColors.size() == mVertices.size(); }

    /// Whether anything has changed since the last upload.
    bool isDirty() const { return mIsDirty; }
    void setUploaded() { mIsDirty = false; }

    const std::vector<Math::Vector3<float>>& vertices() const { return mVertices; }
    /// Running length in pixels, one for each vertex once calcPositions() has run.
    const std::vector<float>& positions() const { return mPositions; }
    const std::vector<Math::Vector4<float>>& colors() const { return mColors; }
    const std::vector<std::uint32_t>& indices() const { return mIndices; }

private:
    template <typename Point>
    void appendPoints(const std::vector<Point>& points);

    std::vector<Math::Vector3<float>> mVertices;
    std::vector<float> mPositions;
    std::vector<Math::Vector4<float>> mColors;
    std::vector<std::uint32_t> mIndices;
    std::vector<std::uint32_t> mSpareIndices;
    std::uint32_t mSeparator;
    std::uint32_t mNextIndex = 0;
    bool mIsDirty = false;
};

} // namespace Tavik::OpenGL
