#pragma once

#include <tavik/Export.h>

/// @file
/// Distance fields from pictures of coverage (0 outside, 255 inside, between them on an anti-aliased edge).
///
/// In a distance field a byte tells how far a pixel's centre is from the nearest edge, so that a shape that has been
/// rasterised once can be drawn sharp at many sizes, and with outlines:
///
///     std::vector<unsigned char> field(width * height);
///     sdfBuildDistanceField(field.data(), width, 8.0f, coverage.data(), width, height, width);
///
/// The edge is found to a fraction of a pixel: within a pixel from its coverage and the direction in which coverage
/// grows around it. Widths, heights, radii and distances are in pixels, strides in bytes from one row to the next. A
/// width or height below 1 makes these functions do nothing. Safe from any thread.

/// Builds the distance field of a picture.
///
/// A byte is 127.5 × (1 + d / radius), truncated and clamped to 0 and 255, where d is the distance to the nearest
/// edge, positive where the coverage is 128 or more. Pictures narrower or lower than 3 pixels show no edges and come
/// out as 0 and 255 alone; edges are not looked for in the outermost rows and columns of others either.
/// @param out,outStride  height rows of outStride bytes; may be the picture itself, with the same stride
/// @param radius         distance at which the field ends, above 0
/// @param image,stride   height rows of stride bytes
/// @param width,height   of the picture
/// @return 0 when the work area of width × height × 12 bytes could not be allocated, otherwise 1
TAVIK_API int sdfBuildDistanceField(unsigned char* out, int outStride, float radius, const unsigned char* image,
                                    int width, int height, int stride);

/// The same with the caller's work area, which may serve again.
/// @param out,outStride,radius,image,width,height,stride  as above
/// @param work  width × height × 12 bytes, aligned for float as memory from new is; overwritten
TAVIK_API void sdfBuildDistanceFieldNoAlloc(unsigned char* out, int outStride, float radius, const unsigned char* image,
                                            int width, int height, int stride, unsigned char* work);

/// Turns coverage into the distance to the edge in the pixels that lie on one: 127.5 on the edge, 0 from 0.71 pixels
/// outside, 255 from as far inside. All other pixels become 0, or stay 255; the outermost rows and columns become 0.
/// @param out,outStride  height rows of outStride bytes that do not overlap the picture
/// @param image,stride   height rows of stride bytes
/// @param width,height   of the picture
TAVIK_API void sdfCoverageToDistanceField(unsigned char* out, int outStride, const unsigned char* image, int width,
                                          int height, int stride);
