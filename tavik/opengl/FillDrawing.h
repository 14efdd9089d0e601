#pragma once

#include <tavik/math/Vector4.h>

#include <cstdint>

namespace Tavik::OpenGL {

class FillPattern;

/// Activates a program that fills, with its uniforms: one colour and the pattern, or neither where each vertex has a
/// colour.
void activateFill(std::uint32_t program, Math::Vector4<float> color, const FillPattern& pattern);

/// Blends with source alpha over what is there from now on.
void enableBlending();

/// Unbinds vertex array and program. Check for errors of the drawing before: this drops them.
void endFill();

} // namespace Tavik::OpenGL
