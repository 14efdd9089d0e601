#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/TextureObject.h>
#include <tavik/opengl/TexturedVertices.h>

namespace Tavik::OpenGL {

/// Frames of a video, streamed into a texture and drawn on one strip of triangles, multiplied by a colour.
///
///     Video camera;
///     camera.init(640, 480);
///     ...
///     camera.putFrame(rgb); // each time a frame comes
///     camera.render();      // each time the window is drawn
///
/// init() makes a rectangle of the frames' size round the origin; move it with the matrix stack. For other shapes
/// clearVertex() after it, and addVertex().
///
/// A frame goes through a buffer of OpenGL's, which gets new memory for it where the one before is still being read: so
/// putFrame() takes the time of copying the frame, and does not wait for drawing.
///
/// Coordinates are in the space of the matrix stack. init() needs the context to be current and OpenGL to be loaded,
/// which it sees to itself. Vertices may be added before there is a context, but init() replaces them; the next
/// render() after a change uploads them all.
///
/// Drawing blends with source alpha over what is there; frames are opaque, so that only the colour's alpha counts.
/// Afterwards the blend state stays so, unit 0 has no texture, the unit that was active is active again, and no program
/// and no vertex array is bound. OpenGL errors of the drawing are dropped.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API Video
{
public:
    /// Makes ready for frames of this size, and a rectangle of it (pixels) round the origin, upright where y points up.
    /// Everything before is dropped, vertices included. Where OpenGL is not loaded, refuses, or a size is 0 or more
    /// than GL_MAX_TEXTURE_SIZE, there is nothing to draw afterwards.
    /// @param width,height  pixels
    void init(unsigned int width, unsigned int height);

    /// Takes a frame for the drawings that follow. Null, and frames before init(), are ignored.
    /// @param rgb  width × height × 3 bytes: red, green, blue, rows without padding, top row first; not read any more
    ///             afterwards
    void putFrame(const unsigned char* rgb);

    /// @{
    /// Append a vertex to the strip; w is dropped.
    /// @param vertex      in the space of the matrix stack
    /// @param coordinate  of the frame: (0, 0) is the first pixel of the first row, (1, 1) the last of the last
    void addVertex(Math::Vector3<float> vertex, Math::Vector2<float> coordinate) { mVertices.add(vertex, coordinate); }
    void addVertex(Math::Vector4<float> vertex, Math::Vector2<float> coordinate)
    {
        mVertices.add({vertex.x, vertex.y, vertex.z}, coordinate);
    }
    /// @}

    /// Removes all vertices; the frame stays.
    void clearVertex() { mVertices.clear(); }

    /// Removes vertices and frame and deletes the OpenGL objects; the colour stays. Frames are ignored until init().
    void clear();

    /// A colour that the frame is multiplied by, white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// @{
    /// Size of the frames, pixels; 0 before init().
    unsigned int width() const { return mWidth; }
    unsigned int height() const { return mHeight; }
    /// @}

    /// Uploads the vertices; done by render() after changes.
    void setData();

    /// Draws the last frame, if there are one and at least three vertices.
    void render();

private:
    TextureObject mTexture;
    BufferObject mFrameBuffer;
    TexturedVertices mVertices;
    unsigned int mWidth = 0;
    unsigned int mHeight = 0;
    bool mHasFrame = false;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
};

} // namespace Tavik::OpenGL
