#pragma once

#include <tavik/Export.h>
#include <tavik/math/Matrix4.h>

namespace Tavik::OpenGL {

/// @file
/// The stack of transforms through which every drawable is drawn.
///
/// One stack of 32 matrices serves the process. Its top is the current model-view-projection matrix; it starts as the
/// identity, and nothing resets it between frames. An application sets a projection once a frame and wraps what
/// belongs together in a push and a pop:
///
///     MatrixSet(projection);
///     MatrixPush();
///     MatrixTranslate(x, y, 0.0);
///     MatrixRotate(-heading, 0.0, 0.0, 1.0);
///     aircraft.render(-1);
///     MatrixPop();
///
/// New transforms multiply from the right: vertices meet the transform that was added last first. All products are in
/// single precision. Rendering thread only.

/// Replaces the current matrix.
TAVIK_API void MatrixSet(const Math::Matrix4<float>& m);

/// Hands the current matrix to the active program as "mvp"; drawables do it themselves. OpenGL errors are printed.
TAVIK_API void MatrixActivate();

/// Puts a copy of the current matrix on top; without effect, and silent, when 32 matrices are on the stack.
TAVIK_API void MatrixPush();

/// Takes the top off; without effect, and silent, when only one matrix is left.
TAVIK_API void MatrixPop();

/// Makes the current matrix the identity.
TAVIK_API void MatrixLoadIdent();

/// Moves by x, y and z, each rounded to single precision.
TAVIK_API void MatrixTranslate(double x, double y, double z);

/// Scales by x, y and z, each rounded to single precision.
TAVIK_API void MatrixScale(double x, double y, double z);

/// Turns counter-clockwise about an axis through the origin.
/// @param angle  degrees
/// @param x,y,z  the axis, of length 1; another length scales as well
TAVIK_API void MatrixRotate(double angle, double x, double y, double z);

/// Multiplies m on from the right.
TAVIK_API void MatrixMult(const Math::Matrix4<float>& m);

/// The current matrix.
TAVIK_API Math::Matrix4<float> MatrixGet();

} // namespace Tavik::OpenGL
