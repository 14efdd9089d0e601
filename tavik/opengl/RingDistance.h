#pragma once

namespace Tavik::OpenGL {

/// Distances that grow ring by ring: from a pixel to the first of the squares around it, cut off at the picture's
/// borders, that holds a pixel of the other state. Pixels are inside where they are not 0.
///
/// The distance is that to the corner of the square that has the smallest x and y, so √2 for each ring; it is less
/// where that corner is cut off.

/// Turns a picture into its distance field: the pixel deepest inside becomes 255, the one farthest outside 0. Prints
/// the range of distances.
/// @param image  width × height bytes, in place
/// @param radius  rings that are searched, at most 253; what is farther counts as √2 × radius
/// Nothing is done without pixels, or without memory for 2 bytes for each of them.
void buildRingDistanceField(unsigned char* image, unsigned int width, unsigned int height, unsigned int radius);

/// The distance of one pixel, negative inside.
/// @param radius  any number of rings
/// @param distance  √2 × radius, with its sign, where no pixel is of the other state; 0 outside the picture
/// @return whether there is a pixel of the other state
bool nearestByRings(const unsigned char* image, unsigned int width, unsigned int height, unsigned int x, unsigned int y,
                    unsigned int radius, float& distance);

} // namespace Tavik::OpenGL
