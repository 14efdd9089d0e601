#pragma once

#include <support/Area.h>

namespace MovingMap {

using Tavik::Support::Area;

} // namespace MovingMap
