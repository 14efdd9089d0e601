#pragma once

#include <tavik/Export.h>

#include <cstdint>
#include <string>

namespace Tavik::OpenGL {

/// One GLSL shader object: a stage of a program.
///
///     Shader vertex(Shader::VertexShader);
///     if (vertex.loadSource("glow.vert") && vertex.compile()) {
///         program.attachShader(vertex);
///     }
///
/// GlHandler::instance() must have been called before, with the context current. The shader object is never deleted
/// from OpenGL, since programs keep it attached. Copies name the same shader object.
/// Rendering thread only.
class TAVIK_API Shader
{
public:
    /// The stages that a shader can be.
    enum TShaderType : std::uint32_t
    {
        VertexShader = 0,
        FragmentShader = 1,
        GeometryShader = 2
    };

    /// Creates the shader object.
    /// @param type  with any other value, or while OpenGL is not loaded, nothing is created and handle() is 0
    explicit Shader(TShaderType type);

    /// OpenGL's name of the shader object; 0 for none.
    unsigned int handle() const { return mHandle; }

    /// Reads the source from a text file.
    /// @return false when the file cannot be opened or is larger than 16 MiB, which no shader is
    bool loadSource(const std::string& fileName);

    /// Takes the source from memory, up to the first NUL if it contains one.
    /// @param text    the source
    /// @param length  bytes at text, which need not end with NUL
    /// @return true; false only for a null text with a length or where memory runs out
    bool loadSource(const unsigned char* text, unsigned int length);

    /// Compiles the source and prints OpenGL's log to standard output when that fails.
    /// @return whether it compiled
    bool compile();

    /// Whether the last compilation succeeded; prints the log when it did not.
    bool checkError() const;

    /// Prints OpenGL's log of the last compilation to standard output, if there is one.
    void info() const;

private:
    void setSource(const char* text) const;

    TShaderType mType;
    unsigned int mHandle = 0;
};

} // namespace Tavik::OpenGL
