#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/FillPattern.h>
#include <tavik/opengl/Tesselator.h>
#include <tavik/opengl/VertexList.h>

#include <vector>

namespace Tavik::OpenGL {

/// Areas of any shape, filled with one colour, through a pattern if wanted.
///
///     Polygon airspaces;
///     airspaces.setColor({0.2f, 0.4f, 1.0f, 0.3f});
///     airspaces.addTessPolygon(tesselator.tesselate()); // any number of areas, see Tesselator
///     airspaces.render();                               // each frame
///
/// Coordinates are in the space of the matrix stack. Vertices live on the CPU and may be added before there is a
/// context; the next render() after a change uploads them all.
///
/// Drawing blends with source alpha over what is there, area by area in the order they were added: where two of them
/// overlap, both show. Afterwards blending stays on, and no program and no vertex array is bound. OpenGL errors are
/// printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API Polygon
{
public:
    /// Adds an area. Give it as it comes from tesselate(), or moved: then its vertices are copied once at most.
    void addTessPolygon(Tesselator::TessPolygon polygon);

    /// Removes all areas.
    void clearVertex();

    /// Deletes the OpenGL objects; the areas stay, and the next render() creates the objects again.
    void clear() { mVertices.clearObjects(); }

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// Draws only where a pattern has its bits set. The pattern is fixed to the window, whatever moves below it.
    /// @param pattern  32 rows of 32 bits, see FillPattern::set; null draws everywhere
    void setPattern(const unsigned char* pattern) { mPattern.set(pattern); }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init() { setData(); }

    /// Uploads the vertices; done by render() after changes.
    void setData();

    /// Draws, if there is an area.
    void render();

private:
    struct DrawCommand
    {
        unsigned int mode;
        unsigned int firstVertex;
        unsigned int vertexCount;
    };

    // Draw commands of one mode, which OpenGL takes at once: those from firstCommand on in mFirstVertices.
    struct Batch
    {
        unsigned int mode;
        std::size_t firstCommand;
        int commandCount;
    };

    void mergeCommands();

    VertexList mVertices;
    std::vector<DrawCommand> mDrawCommands;
    std::vector<Batch> mBatches;
    std::vector<int> mFirstVertices;
    std::vector<int> mVertexCounts;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    FillPattern mPattern;
    bool mIsLevel = true; // all vertices have the z of the first
    float mLevel = 0.0f;
};

} // namespace Tavik::OpenGL
