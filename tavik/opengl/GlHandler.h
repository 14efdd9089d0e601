#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/opengl/ShaderProgram.h>

#include <cstdint>
#include <map>
#include <string>

namespace Tavik::OpenGL {

/// The one object through which everything is drawn: it loads OpenGL, builds the standard programs and knows which of
/// them is active.
///
/// Make an OpenGL 3.3 core context current, then call instance() once before anything else of this namespace:
///
///     GlHandler& gl = GlHandler::instance();
///     gl.setViewPort({1280.0f, 800.0f}); // the window's size in pixels, again at each change
///
/// Drawables do the rest themselves. Drawing with a standard program by hand goes:
///
///     gl.activateShader(2);
///     gl.setFloatVar("color", 1.0f, 0.0f, 0.0f, 1.0f);
///     MatrixActivate();
///     ... // bind, draw, unbind
///     gl.deactivateShader();
///
/// Standard programs, with vertex attributes at the same locations in all of them: "vertex" 0, "vertexUV" 2,
/// "normals" 3, "color" 4, "position" 5.
///
/// | id | draws | attributes | uniforms beside "mvp" |
/// |---|---|---|---|
/// | 1 | a colour for each vertex | vertex, color | |
/// | 2 | one colour | vertex | color |
/// | 3 | a texture | vertex, vertexUV | color, myTextureSampler |
/// | 4 | a map picture with shaded relief | vertex, vertexUV, normals | below |
/// | 5 | glyphs from coverage | vertex, vertexUV | color, offset, myTextureSampler |
/// | 6 | glyphs from a distance field | vertex, vertexUV | color, offset, outlineColor, outlineWidth, Texture0 |
/// | 7 | stroke glyphs | vertex | color, offset |
/// | 8 | wide segments | vertex, position | color, lineWidth, viewPort, antialias, lineStipple |
/// | 9 | wide polylines | vertex, position | as 8, lfactor |
/// | 10 | wide polylines, a colour for each vertex | vertex, color, position | as 9 without color |
/// | 11 | one colour through a 32 × 32 pattern | vertex | color, stipplePattern, stippleUse |
///
/// Program 4 takes color, lightDirection, shadingOn, terrainShadingFactor, terrainContrast, terrainBrightness,
/// osmTerrain, Texture0, Texture1 and Texture2.
///
/// Identifier 0 stands for no program. Programs and shaders live until the process ends. Where OpenGL cannot be loaded
/// (there is no current context, say), that is printed, there are no programs, and drawing is without effect.
///
/// OpenGL errors never reach the caller; they are printed to standard output. Rendering thread only; the creation of
/// the singleton alone is safe from any thread.
class TAVIK_API GlHandler
{
public:
    /// The singleton; the first call loads OpenGL, builds the programs and prints the OpenGL and GLSL versions.
    static GlHandler& instance();

    GlHandler(const GlHandler&) = delete;
    GlHandler& operator=(const GlHandler&) = delete;

    /// Whether OpenGL could be loaded; while not, nothing is drawn.
    bool isLoaded() const;

    /// Builds the standard programs; has been done by instance(). An identifier that is already taken is left alone.
    void initStandardShaders();

    /// @{
    /// Version of OpenGL, and of its shading language: major × 100 + minor, 0 if unknown. Both print what they read.
    int glVersion() const;
    int glSlVersion() const;
    /// @}

    /// Makes a program active; an unknown identifier changes nothing.
    void activateShader(unsigned int id);

    /// Makes no program active.
    void deactivateShader();

    /// The active program. Where none is active, a new and empty one takes its place, and OpenGL reports what is done
    /// with it as errors.
    ShaderProgram& activeShader();

    /// OpenGL's name of activeShader().
    unsigned int activeShaderHandle();

    /// @{
    /// Size of the drawing area in pixels, which widths and stipples of lines are measured by. It does not change
    /// OpenGL's own view port.
    void setViewPort(Math::Vector2<float> size);
    Math::Vector2<float> viewPort() const;
    /// @}

    /// Hands the size to the active program as "viewPort".
    void activateViewPort();

    /// @{
    /// Set a uniform of activeShader().
    void setFloatVar(const std::string& name, float x);
    void setFloatVar(const std::string& name, float x, float y);
    void setFloatVar(const std::string& name, float x, float y, float z);
    void setFloatVar(const std::string& name, float x, float y, float z, float w);
    void setIntVar(const std::string& name, int value);
    /// @}

    /// Sets a uniform array of ints.
    /// @param name  of the uniform
    /// @param pattern  32 ints
    void setStippleVar(const std::string& name, const int* pattern);

    /// @{
    /// Prints "Error <call> <where> code" to standard output for each pending OpenGL error.
    /// @param call  name of the OpenGL call
    /// @param where  signature of the calling function
    static void checkError(const std::string& call, const std::string& where);
    static void checkError(const char* call, const char* where);
    /// @}

    /// Drops all pending OpenGL errors.
    static void clearError();

private:
    GlHandler();
    ~GlHandler() = default;

    std::map<std::uint32_t, ShaderProgram> mPrograms;
    std::uint32_t mActiveShader;
    std::string mGlVersion;
    std::string mGlSlVersion;
    Math::Vector2<float> mViewPort;
};

/// The callback that the library gives to OpenGL's debug output: prints errors to standard error, ignores the rest.
/// The arguments are OpenGL's own (GLenum and GLuint are unsigned int, GLsizei is int, GLchar is char).
TAVIK_API void MessageCallback(unsigned int source, unsigned int type, unsigned int id, unsigned int severity,
                               int length, const char* message, const void* userParam);

} // namespace Tavik::OpenGL
