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
/// Coordinates are in the space of the matrix stack, which leads to clip space without perspective; the widths and
/// lengths that follow are pixels of GlHandler::setViewPort(). Vertices live on the CPU and may be added before there
/// is a context; the next render() after a change uploads them all. To change the lines, clearVertex() and add them
/// anew: memory is kept, and vertices added after a render() draw the loop before them with doubled points.
///
/// The stipple runs along the vertices in the order they were added, through all loops as if they were joined; it is
/// measured when the vertices are uploaded and when the scale changes, with the matrix of that moment.
///
/// Drawing blends with source alpha over what is there, or, without anti-aliasing, does not blend at all. Afterwards
/// the blend state stays so, primitive restart and line smoothing are off, and no program and no vertex array is
/// bound. OpenGL errors of the drawing and of an upload before it are
/// printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API LineLoops
{
public:
    /// Between the loops in the indices, and the restart index when drawing.
    static constexpr unsigned int LoopSeparator = 0xFFFFFFFF;

    LineLoops() : mGeometry(LoopSeparator) {}

    /// Append a vertex to the one loop that is built in this way; missing z is 0, w is dropped. The first upload after
    /// a clearVertex() closes it, unless addLineLoop() has been called since.
    void addVertex(Math::Vector2<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mGeometry.addVertex(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, vertex.z}); }

    /// Append the points and the first of them once more, and end the loop. Vertices that were added one by one before
    /// are its beginning.
    void addLineLoop(const std::vector<Math::Vector2<float>>& points);
    void addLineLoop(const std::vector<Math::Vector3<float>>& points);
    void addLineLoop(const std::vector<Math::Vector4<float>>& points);

    /// Removes all vertices and indices.
    void clearVertex();

    /// Deletes the OpenGL objects; the next render() creates them again.
    void clear() { mBuffers.clear(); }

    /// Replaces the vertices by the four corners (0, 0), (0, height), (width, 0), (width, height), but not the indices:
    /// which corners are joined is the caller's to say, by vertices added before. Indices beyond them draw
    /// nothing, now and when there are more vertices again.
    void setRect(unsigned int width, unsigned int height) { mGeometry.setRect(width, height); }

    /// Width of the band, pixels.
    void setLineWidth(float width) { mStyle.width = width; }

    /// @param pattern  bits 0 to 15 for the first 16 of each 32 pixels of length, lowest first; the other 16 pixels
    ///                 stay empty. 0 draws solid.
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }

    /// Soft edges; without them translucent colours are drawn opaque.
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }

    void setColor(Math::Vector4<float> color) { mStyle.color = color; }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init();

    /// Prepares and uploads the vertices, see above; done by render() after changes. Each call doubles the ends of the
    /// loops once more.
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
