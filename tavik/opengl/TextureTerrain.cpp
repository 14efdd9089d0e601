#include <tavik/opengl/TextureTerrain.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/ImageBlob.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TerrainColors.h>
#include <tavik/opengl/TextureDrawing.h>
#include <tavik/opengl/TextureMaking.h>

#include <GL/glew.h>

#include <string>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::TextureTerrain::render()";

constexpr TextureSampling Sampling = {GL_LINEAR, GL_CLAMP_TO_EDGE};

// Made once: most are too long to be built in each frame without memory from the heap.
struct UniformNames
{
    std::string shadingOn = "shadingOn";
    std::string lightDirection = "lightDirection";
    std::string shadingFactor = "terrainShadingFactor";
    std::string contrast = "terrainContrast";
    std::string brightness = "terrainBrightness";
    std::string osmTerrain = "osmTerrain";
    std::string picture = "Texture0";
    std::string normals = "Texture1";
    std::string colorRamp = "Texture2";
};

const UniformNames& uniformNames()
{
    static const UniformNames names;
    return names;
}

bool createFrom(const TextureImage& image, unsigned int& name)
{
    const unsigned int made = image.pixels == nullptr ? 0 : makeTexture(GL_TEXTURE_2D, image, Sampling);
    if (made != 0) {
        name = made;
    }
    return made != 0;
}

} // namespace

bool TextureTerrain::load(const unsigned char* pixels, unsigned int width, unsigned int height, unsigned int format)
{
    unsigned int name = 0;
    if (!createTexture(name, pixels, width, height, format)) {
        return false;
    }
    mPicture.take(name);
    mWidth = width;
    mHeight = height;
    return true;
}

bool TextureTerrain::load(const void* blob, unsigned int format)
{
    const ImageBlob image = readImageBlob(blob);
    return load(image.pixels, image.width, image.height, format);
}

bool TextureTerrain::loadNormals(const unsigned short* data, unsigned int width, unsigned int height,
                                 unsigned int format)
{
    unsigned int name = 0;
    if (!createTextureNormal(name, data, width, height, format)) {
        return false;
    }
    mNormals.take(name);
    return true;
}

bool TextureTerrain::createTexture(unsigned int& name, const unsigned char* pixels, unsigned int width,
                                   unsigned int height, unsigned int format)
{
    return createFrom({GL_RGBA, width, height, format, GL_UNSIGNED_BYTE, pixels}, name);
}

bool TextureTerrain::createTextureNormal(unsigned int& name, const unsigned short* data, unsigned int width,
                                         unsigned int height, unsigned int format)
{
    // GL_RGBA would leave the depth to the driver, and some then keep 8 bits: steps of 37 m.
    return createFrom({GL_RGBA16, width, height, format, GL_UNSIGNED_SHORT, data}, name);
}

void TextureTerrain::clear()
{
    mPicture.clear();
    mNormals.clear();
    mDefaultColors.clear();
    mColorMap = 0;
    mVertices.clear();
    mVertices.release();
    mWidth = 0;
    mHeight = 0;
}

void TextureTerrain::setData()
{
    mVertices.upload();
    VertexArray::unbind();
}

void TextureTerrain::render()
{
    GlHandler::clearError();
    const bool hasTexture = mPicture.name() != 0 || mNormals.name() != 0;
    if (mVertices.size() < 3 || !hasTexture) {
        return;
    }
    if (mVertices.isDirty()) {
        setData();
    }
    const unsigned int ramp = colorRamp();
    GlHandler::checkError("TextureTerrain", Where); // setting uniforms would drop the errors of the upload
    beginTextures(TextureTerrainProgram, mColor);
    setUniforms();
    {
        TextureUnits units;
        units.bindNext(GL_TEXTURE_2D, mPicture.name());
        units.bindNext(GL_TEXTURE_2D, mNormals.name());
        units.bindNext(GL_TEXTURE_1D, ramp);
        mVertices.bind();
        drawStrip(mVertices.size());
    }
    GlHandler::checkError("TextureTerrain", Where);
    endFill();
}

// The caller's ramp, or else the default one, which only a current context can make.
unsigned int TextureTerrain::colorRamp()
{
    if (mColorMap != 0) {
        return mColorMap;
    }
    if (mDefaultColors.name() == 0) {
        mDefaultColors.take(makeTerrainColors());
    }
    return mDefaultColors.name();
}

void TextureTerrain::setUniforms() const
{
    const UniformNames& names = uniformNames();
    const bool isShaded = mIsShading && mNormals.name() != 0;
    GlHandler& gl = GlHandler::instance();
    gl.setIntVar(names.shadingOn, isShaded ? 1 : 0);
    if (isShaded) {
        gl.setFloatVar(names.lightDirection, mLightDirection.x, mLightDirection.y, mLightDirection.z);
    }
    gl.setFloatVar(names.shadingFactor, static_cast<float>(mShadingFactor));
    gl.setFloatVar(names.contrast, static_cast<float>(mShadingContrast));
    gl.setFloatVar(names.brightness, static_cast<float>(mShadingBrightness));
    gl.setFloatVar(names.osmTerrain, static_cast<float>(mTerrainOsm));
    gl.setIntVar(names.picture, 0);
    gl.setIntVar(names.normals, 1);
    gl.setIntVar(names.colorRamp, 2);
}

} // namespace Tavik::OpenGL
