#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/LineBuffers.h>
#include <tavik/opengl/LineGeometry.h>
#include <tavik/opengl/LineStyle.h>

#include <vector>

namespace Tavik::OpenGL {

/// Closed polylines of any width, anti-aliased, stippled, in one colour, drawn in one call.
///
///     LineLoops sectors;
///     sectors.setLineWidth(2.0f);
///     sectors.setStipple(0x00FF);
///     sectors.addLineLoop(boundary);    // any number of loops; the last point is joined to the first
///     sectors.render(metresPerPixel);   // each frame
///
/// What is not told below is told in LineStrips.h: coordinates, uploads, blending and state, ownership, thread. The
/// stipple is measured anew also when the scale of the drawing changes.
class TAVIK_API LineLoops
{
public:
    /// Between the loops in the indices, and the restart index when drawing.
    static constexpr unsigned int LoopSeparator = 0xFFFFFFFF;

    LineLoops() : mGeometry(LoopSeparator) {}

    /// @{
    /// Append a vertex to the one loop that is built in this way; missing z is 0, w is dropped. The first upload after
    /// a clearVertex() closes it, unless addLineLoop() has been called since.
    void addVertex(Math::Vector2<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mGeometry.addVertex(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, vertex.z}); }
    /// @}

    /// @{
    /// Append the points and the first of them once more, and end the loop. Vertices that were added one by one before
    /// are its beginning.
    void addLineLoop(const std::vector<Math::Vector2<float>>& points);
    void addLineLoop(const std::vector<Math::Vector3<float>>& points);
    void addLineLoop(const std::vector<Math::Vector4<float>>& points);
    /// @}

    /// @{
    /// As in LineStrips, all of them.
    void clearVertex();
    void clear() { mBuffers.clear(); }
    void setRect(unsigned int width, unsigned int height) { mGeometry.setRect(width, height); }
    void setLineWidth(float width) { mStyle.width = width; }
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }
    void setColor(Math::Vector4<float> color) { mStyle.color = color; }
    void init();
    /// @}

    /// Closes the one loop, and prepares and uploads the vertices; done by render() after changes. Each call doubles
    /// the ends of the loops once more.
    void setData();

    /// Measures the stipple anew with the current matrix and view port.
    void calcPositions();

    /// Draws, if there are at least two indices.
    /// @param scale  the scale of the drawing, in any unit. A stipple is measured anew when this differs by more than
    ///               0.001 from the scale it was last measured for in this way, at first 0; the measuring of an upload
    ///               does not count.
    void render(double scale);

private:
    template <typename Point>
    void appendLoop(const std::vector<Point>& points);

    LineGeometry mGeometry;
    LineBuffers mBuffers;
    LineStyle mStyle;
    double mScale = 0.0;
    bool mIsClosed = false;
};

} // namespace Tavik::OpenGL
