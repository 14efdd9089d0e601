#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/TextureObject.h>
#include <tavik/opengl/TexturedVertices.h>

namespace Tavik::OpenGL {

/// Shaded relief, a map picture on shaded relief, or anything between the two, drawn on one strip of triangles.
///
///     TextureTerrain relief;
///     relief.loadNormals(packTerrain(normals, heights).data(), columns, rows, GL_RGBA); // TerrainTexels.h
///     relief.addVertex(southWest, {0.0f, 1.0f}); // where the grid's first row is its northernmost
///     relief.addVertex(northWest, {0.0f, 0.0f});
///     relief.addVertex(southEast, {1.0f, 1.0f});
///     relief.addVertex(northEast, {1.0f, 0.0f});
///     relief.render(); // each frame
///
/// Each pixel takes a surface normal and a height from the texture of loadNormals(), and a colour for the height from a
/// colour ramp. With the light l (the way it travels), the normal n and the settings below:
///
///     light      = max(−l · n, 0), both of length 1; 1 without shading
///     brightness = (1 − shadingFactor) + light × shadingFactor
///     map        = picture × color × brightness, its alpha = the picture's × the color's
///     relief     = ramp × brightness, its alpha = 1
///     mix        = map × terrainOsm + relief × (1 − terrainOsm)
///     pixel      = (contrast × (mix − 0.5) + 0.5) × shadingBrightness; its alpha is the mix's
///
/// Without settings that is the relief alone, in the default colours, lit from the north-west. The default ramp, made
/// at the first drawing, runs from water (up to sea level) through green and brown to white above 4000 m; heights
/// count on the scale of TerrainTexels.h, alpha = (metres + 512) × 7 of 65535. A ramp of your own replaces it.
///
/// The textures come from load() and loadNormals(), one is enough; vertices come from addVertex() alone. Coordinates
/// are in the space of the matrix stack. Vertices live on the CPU and may be added before there is a context; the next
/// render() after a change uploads them all. The loads need the context to be current and OpenGL to be loaded, which
/// they see to themselves; where it is not, they return false.
///
/// Drawing blends with source alpha over what is there. Afterwards the blend state stays so; units 0 to 2 have no
/// texture, the unit that was active is active again, and no program and no vertex array is bound. OpenGL errors of the
/// drawing and of an upload before it are printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API TextureTerrain
{
public:
    /// Takes a map picture of 8 bits a channel and drops the one before; vertices stay.
    /// @param pixels  rows without padding; the row that comes first has texture coordinate v = 0
    /// @param width,height  pixels, at least 1 and no more than OpenGL's GL_MAX_TEXTURE_SIZE
    /// @param format  OpenGL's order of the channels, such as GL_RGBA or GL_RGB
    /// @return false when pixels are null, the size is out of range or OpenGL refuses; then nothing changes
    bool load(const unsigned char* pixels, unsigned int width, unsigned int height, unsigned int format);

    /// The same from a blob: width and height as 32-bit numbers of this machine, 4 bytes that are not read, pixels.
    bool load(const void* blob, unsigned int format);

    /// Takes normals and heights of 16 bits a channel and drops those before; vertices stay. They are kept with 16
    /// bits, so that heights do not come in steps of tens of metres.
    /// @param data  for each point normal and height as TerrainTexels.h packs them, rows without padding
    /// @param width,height,format  as for load(); the format is GL_RGBA as a rule
    /// @return as load()
    bool loadNormals(const unsigned short* data, unsigned int width, unsigned int height, unsigned int format);

    /// The maker behind load().
    /// @param name  receives OpenGL's name of a new texture, which is the caller's to delete; left alone on failure
    /// @param pixels,width,height,format  as for load()
    /// @return as load()
    static bool createTexture(unsigned int& name, const unsigned char* pixels, unsigned int width, unsigned int height,
                              unsigned int format);

    /// The maker behind loadNormals().
    /// @param name  as for createTexture()
    /// @param data,width,height,format  as for loadNormals()
    /// @return as loadNormals()
    static bool createTextureNormal(unsigned int& name, const unsigned short* data, unsigned int width,
                                    unsigned int height, unsigned int format);

    /// Uses a colour ramp of the caller's instead of the default one.
    /// @param name  OpenGL's name of a one-dimensional texture over alpha, 0 to 65535; 0 for the default again. It
    ///              stays the caller's, who keeps it while it is used and deletes it afterwards
    void setColorMap(unsigned int name) { mColorMap = name; }

    /// Light and shadow, on by default; without normals there are none.
    void setShading(bool on) { mIsShading = on; }

    /// How dark slopes get that face away from the light: 0 not at all, 1 black. 0.5 by default.
    void setShadingFactor(double factor) { mShadingFactor = factor; }

    /// 1, the default, leaves the colours as they are, 0 makes everything grey.
    void setShadingContrast(double contrast) { mShadingContrast = contrast; }

    /// 1, the default, leaves the colours as they are, 0 makes everything black.
    void setShadingBrightness(double brightness) { mShadingBrightness = brightness; }

    /// 0, the default, shows the relief alone, 1 the map picture alone.
    void setTerrainOsm(double part) { mTerrainOsm = part; }

    /// Sets where the light comes from.
    /// @param direction  the way the light travels: east, north, up; any length but 0. By default (1, −1, −√2), from
    ///                   the north-west and 45° high
    void setLightDirection(Math::Vector3<float> direction) { mLightDirection = direction; }

    /// A colour that the map picture is multiplied by, white by default; the relief has none.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// @{
    /// Append a vertex to the strip; w is dropped.
    /// @param vertex      in the space of the matrix stack
    /// @param coordinate  of the textures, 0 to 1 each way; beyond, their edge goes on
    void addVertex(Math::Vector3<float> vertex, Math::Vector2<float> coordinate) { mVertices.add(vertex, coordinate); }
    void addVertex(Math::Vector4<float> vertex, Math::Vector2<float> coordinate)
    {
        mVertices.add({vertex.x, vertex.y, vertex.z}, coordinate);
    }
    /// @}

    /// Removes all vertices; textures stay.
    void clearVertex() { mVertices.clear(); }

    /// Removes vertices and textures, forgets the ramp of setColorMap() and deletes the OpenGL objects; the settings
    /// stay.
    void clear();

    /// @{
    /// Size of the map picture, pixels; 0 without.
    unsigned int width() const { return mWidth; }
    unsigned int height() const { return mHeight; }
    /// @}

    /// Creates the OpenGL objects of the vertices and uploads what there is; done by render().
    void init() { setData(); }

    /// Uploads the vertices; done by render() after changes.
    void setData();

    /// Draws, if there are at least three vertices, and a map picture or normals.
    void render();

private:
    unsigned int colorRamp();
    void setUniforms() const;

    TextureObject mPicture;
    TextureObject mNormals;
    TextureObject mDefaultColors;
    unsigned int mColorMap = 0;
    TexturedVertices mVertices;
    bool mIsShading = true;
    unsigned int mWidth = 0;
    unsigned int mHeight = 0;
    double mShadingFactor = 0.5;
    double mShadingContrast = 1.0;
    double mShadingBrightness = 1.0;
    double mTerrainOsm = 0.0;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    Math::Vector3<float> mLightDirection = {1.0f, -1.0f, -1.41421356f};
};

} // namespace Tavik::OpenGL
