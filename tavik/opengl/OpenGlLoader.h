#pragma once

namespace Tavik::OpenGL {

/// Loads the OpenGL entry points for the context that is current on this thread.
/// @return null on success, otherwise the loader's error text
const char* loadOpenGl();

/// Whether every entry point that the library calls has been loaded. While this is false none may be called: they are
/// null pointers.
bool isOpenGlLoaded();

} // namespace Tavik::OpenGL
