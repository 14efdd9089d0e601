#pragma once

#include <string>

namespace MovingMap {

/// What the fonts draw, from what editors write: UTF-8 becomes Latin-1, with '?' for characters that Latin-1 lacks.
/// Bytes that are no UTF-8 stay as they are, so Latin-1 itself may come as well.
std::string toLatin1(const std::string& text);

} // namespace MovingMap
