#pragma once

#include <string>
#include <string_view>

namespace Tavik::FileSystem {

/// Writes a file so that at every moment either the old or the new content stands there whole, whatever happens to the
/// program, the disk or the power.
///
/// The content is written beside the file, flushed to the disk and renamed. Symbolic links are followed and stay.
/// Permission bits of an existing file stay, its owner where the system allows that; further hard links keep the old
/// content. A device or pipe is written directly. Needs write permission for the file and its folder. A program killed
/// half-way leaves a file ".tavik-<process>-<number>" there.
/// @return false where that failed; nothing is left behind then
bool replaceFile(const std::string& file, std::string_view content);

} // namespace Tavik::FileSystem
