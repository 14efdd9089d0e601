#include <tavik/opengl/FillPattern.h>

#include <tavik/opengl/GlHandler.h>

#include <cstring>

namespace Tavik::OpenGL {

void FillPattern::set(const unsigned char* pattern)
{
    mIsUsed = pattern != nullptr;
    if (mIsUsed) {
        std::memcpy(mRows.data(), pattern, sizeof(mRows));
    }
}

void FillPattern::activate() const
{
    GlHandler& gl = GlHandler::instance();
    gl.setIntVar("stippleUse", mIsUsed ? 1 : 0);
    gl.setStippleVar("stipplePattern", mRows.data());
}

} // namespace Tavik::OpenGL
