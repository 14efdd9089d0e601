#pragma once

#include <moving_map/HeightSource.h>
#include <moving_map/LocalPlane.h>

#include <vector>

namespace MovingMap {

/// Where a camera in the nose of the aircraft is, and where it looks.
struct CameraPose
{
    Position position;
    double altitudeMetres = 0.0; ///< NaN where it is not known
    double trackDegrees = 0.0;

    bool operator==(const CameraPose& other) const;
};

/// A picture as Tavik::OpenGL::Video takes it: 3 bytes a pixel, red, green, blue, the top row first.
struct CameraPicture
{
    int widthPixels = 0;
    int heightPixels = 0;
    std::vector<unsigned char> rgb;
};

/// Draws what lies ahead of the aircraft, level, 50 degrees wide and as far as 60 km: terrain in the map's colours
/// under haze, grey where there is no terrain data, and the sky.
///
/// Each column is one walk outwards over the ground: what rises above everything nearer is seen.
/// @param source  asked for some 270 heights for each column
CameraPicture drawForwardView(const CameraPose& pose, const HeightSource& source, int widthPixels, int heightPixels);

} // namespace MovingMap
