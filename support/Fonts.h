#pragma once

namespace Tavik::Support {

/// Path of a sans-serif TrueType font of this system, found when the project was configured, for TextureFont::load()
/// and its like; empty where there was none.
///
///     font.load(sansFontPath(), 16);
const char* sansFontPath();

/// The same in bold.
const char* sansBoldFontPath();

} // namespace Tavik::Support
