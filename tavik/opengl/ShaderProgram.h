#pragma once

#include <tavik/Export.h>

#include <memory>
#include <string>

namespace Tavik::OpenGL {

class Shader;

/// One GLSL program: shader stages linked together, and its uniforms.
///
///     ShaderProgram program;
///     program.attachShader(vertex);
///     program.attachShader(fragment);
///     program.bindLocation(0, "vertex"); // before link
///     if (program.link()) {
///         program.use(true);
///         program.setFloatVar("glow", 0.5f);
///     }
///
/// GlHandler::instance() must have been called before, with the context current; while OpenGL is not loaded every
/// operation is without effect. Copies name the same OpenGL program, which is never deleted.
///
/// OpenGL errors are printed to standard output as "Error <call> <function> code", see GlHandler::checkError.
/// Locations of uniforms are looked up once for each name and remembered until the next link().
/// Rendering thread only.
class TAVIK_API ShaderProgram
{
public:
    /// Creates the OpenGL program.
    ShaderProgram();

    // Declared so that moving copies too: a program has no state in which it may not be used.
    /// @{
    /// A copy names the same program.
    ShaderProgram(const ShaderProgram&) = default;
    ShaderProgram& operator=(const ShaderProgram&) = default;
    /// @}

    /// OpenGL's name of the program; 0 while OpenGL is not loaded.
    unsigned int handle() const { return mHandle; }

    /// @{
    /// Adds a stage, or takes one away; takes effect at the next link().
    /// @return true
    bool attachShader(const Shader& shader);
    bool detachShader(const Shader& shader);
    /// @}

    /// Gives a vertex attribute its location; takes effect at the next link().
    void bindLocation(int location, const std::string& name);

    /// Links the attached stages; prints OpenGL's log when that fails.
    /// @return whether the program is linked
    bool link();

    /// Whether the program is linked; prints OpenGL's log when it is not.
    bool checkError() const;

    /// Makes this program current, or none.
    /// @return true
    bool use(bool on);

    /// Where a uniform lives.
    /// @return −1 when the linked program does not use a uniform of this name; −1, and an OpenGL error left pending,
    ///         when the program is not linked
    int uniformLocation(const std::string& name);

    /// @{
    /// Set a uniform of the program that is current, so use(true) first; a name that the program does not use is
    /// ignored.
    void setFloatVar(const std::string& name, float x);
    void setFloatVar(const std::string& name, float x, float y);
    void setFloatVar(const std::string& name, float x, float y, float z);
    void setFloatVar(const std::string& name, float x, float y, float z, float w);
    void setIntVar(const std::string& name, int value);
    /// @}

    /// Sets a uniform array of ints.
    /// @param name  of the uniform
    /// @param pattern  32 ints, for an array of 32; null is ignored
    void setStippleVar(const std::string& name, const int* pattern);

    /// Prints OpenGL's log of the last link to standard output, if there is one.
    void info() const;

private:
    struct UniformLocations;

    unsigned int mHandle = 0;
    std::shared_ptr<UniformLocations> mUniformLocations;
};

} // namespace Tavik::OpenGL
