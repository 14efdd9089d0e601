#pragma once

#include <tavik/opengl/FontType.h>

#include <map>
#include <string>

namespace Tavik::OpenGL {

/// The faces that a class of fonts has loaded, for the life of the process: each is rasterised once, however many
/// objects use it.
///
/// A name whose face could not be loaded keeps its id, with a font that has no texture; loading that name again tries
/// anew and, once it goes well, serves the objects that hold the id already.
class FontRegistry
{
public:
    /// The id under a name, a new one for a new name.
    int idOf(const std::string& name)
    {
        const auto [entry, isNew] = mFontNames.emplace(name, mStaticFontId);
        if (isNew) {
            mFonts[mStaticFontId++];
        }
        return entry->second;
    }

    /// Whether the name has a texture.
    bool isLoaded(const std::string& name) const
    {
        const auto entry = mFontNames.find(name);
        return entry != mFontNames.end() && mFonts.at(entry->second).texture != 0;
    }

    /// The font under an id, null where there is none. It stays where it is.
    FontType* find(int id)
    {
        const auto entry = mFonts.find(id);
        return entry == mFonts.end() ? nullptr : &entry->second;
    }

private:
    std::map<int, FontType> mFonts;
    std::map<std::string, int> mFontNames;
    int mStaticFontId = 0;
};

} // namespace Tavik::OpenGL
