#include <tavik/opengl/VectorCharset.h>

namespace Tavik::OpenGL {

namespace {

constexpr CHARDEF_STRUCT record(double x, double y, std::int32_t operation)
{
    return {static_cast<float>(x), static_cast<float>(y), operation};
}

// A point of a stroke, the last point of a stroke, the last point of the glyph.
constexpr CHARDEF_STRUCT to(double x, double y)
{
    return record(x, y, 1);
}
constexpr CHARDEF_STRUCT end(double x, double y)
{
    return record(x, y, 2);
}
constexpr CHARDEF_STRUCT last(double x, double y)
{
    return record(x, y, 3);
}

// The same about the middle of the character cell: half the advance and half the nominal height.
constexpr double MiddleX = 6.56;
constexpr double MiddleY = 7.985;

constexpr CHARDEF_STRUCT midTo(double x, double y)
{
    return to(MiddleX + x, MiddleY + y);
}
constexpr CHARDEF_STRUCT midEnd(double x, double y)
{
    return end(MiddleX + x, MiddleY + y);
}
constexpr CHARDEF_STRUCT midLast(double x, double y)
{
    return last(MiddleX + x, MiddleY + y);
}

// One glyph a block, each stroke on lines of its own. The grid: columns at 0, 2.23, 4.46, 6.69 and 8.92; rows at −4.56
// (descenders), −2.28, 0, 2.28, 4.56, 6.85 (middle of capitals), 9.13 (small letters), 11.41 and 13.69 (capitals).
// Corners are cut by one column and one row. A dot is a small triangle: it stays solid up to large sizes, and shows
// where OpenGL would draw nothing for a single point.
// clang-format off
constexpr CHARDEF_STRUCT Glyphs[] = {
    // 0, an oval with a cross
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    to(8.92, 2.28), end(8.92, 11.41),
    to(4.46, 0), end(4.46, 13.69),
    to(0, 6.85), last(8.92, 6.85),

    // 1, waypoint fly-by
    midTo(0, 4.6), midTo(1.2, 1.2), midTo(4.6, 0), midTo(1.2, -1.2), midTo(0, -4.6), midTo(-1.2, -1.2),
    midTo(-4.6, 0), midTo(-1.2, 1.2), midLast(0, 4.6),

    // 2, waypoint fly-over
    midTo(0, 4.6), midTo(3.25, 3.25), midTo(4.6, 0), midTo(3.25, -3.25), midTo(0, -4.6), midTo(-3.25, -3.25),
    midTo(-4.6, 0), midTo(-3.25, 3.25), midTo(0, 4.6),
    midTo(1.2, 1.2), midTo(4.6, 0), midTo(1.2, -1.2), midTo(0, -4.6), midTo(-1.2, -1.2), midTo(-4.6, 0),
    midTo(-1.2, 1.2), midLast(0, 4.6),

    // 3, VOR
    midTo(4.6, 0), midTo(2.3, -3.98), midTo(-2.3, -3.98), midTo(-4.6, 0), midTo(-2.3, 3.98), midTo(2.3, 3.98),
    midEnd(4.6, 0),
    midTo(-0.62, -0.46), midTo(0, 0.68), midTo(0.62, -0.46), midLast(-0.62, -0.46),

    // 4, DME
    midTo(-3.98, -3.98), midTo(-3.98, 3.98), midTo(3.98, 3.98), midTo(3.98, -3.98), midLast(-3.98, -3.98),

    // 5, VOR/DME
    midTo(-4.6, -3.98), midTo(-4.6, 3.98), midTo(4.6, 3.98), midTo(4.6, -3.98), midEnd(-4.6, -3.98),
    midTo(-2.3, 3.98), midTo(-4.6, 0), midEnd(-2.3, -3.98),
    midTo(2.3, 3.98), midTo(4.6, 0), midLast(2.3, -3.98),

    // 6, VORTAC
    midTo(3.9, 0), midTo(1.95, -3.38), midTo(-1.95, -3.38), midTo(-3.9, 0), midTo(-1.95, 3.38), midTo(1.95, 3.38),
    midEnd(3.9, 0),
    midTo(-1.95, -4.18), midEnd(1.95, -4.18),
    midTo(4.59, 0.4), midEnd(2.64, 3.78),
    midTo(-4.59, 0.4), midLast(-2.64, 3.78),

    // 7, TACAN
    midTo(-1.5, -4.45), midTo(1.5, -4.45), midTo(1.5, -0.87), midTo(4.6, 0.93), midTo(3.1, 3.52), midTo(0, 1.73),
    midTo(-3.1, 3.52), midTo(-4.6, 0.93), midTo(-1.5, -0.87), midLast(-1.5, -4.45),

    // 8, NDB
    midTo(-0.62, -0.46), midTo(0, 0.68), midTo(0.62, -0.46), midEnd(-0.62, -0.46),
    midTo(-1.1, 4.2), midEnd(1.1, 4.2),
    midTo(3.1, 3.05), midEnd(4.2, 1.15),
    midTo(4.2, -1.15), midEnd(3.1, -3.05),
    midTo(1.1, -4.2), midEnd(-1.1, -4.2),
    midTo(-3.1, -3.05), midEnd(-4.2, -1.15),
    midTo(-4.2, 1.15), midLast(-3.1, 3.05),

    // 9, marker beacon
    midTo(0, 4.6), midTo(1.5, 2.3), midTo(1.5, -2.3), midTo(0, -4.6), midTo(-1.5, -2.3), midTo(-1.5, 2.3),
    midLast(0, 4.6),

    // 10, airport
    midTo(0, 4.6), midTo(0, 3), midTo(1.24, 3), midTo(3, 1.24), midTo(3, -1.24), midTo(1.24, -3), midTo(-1.24, -3),
    midTo(-3, -1.24), midTo(-3, 1.24), midTo(-1.24, 3), midEnd(0, 3),
    midTo(3, 0), midEnd(4.6, 0),
    midTo(0, -3), midEnd(0, -4.6),
    midTo(-3, 0), midLast(-4.6, 0),

    // 11, heliport
    midTo(1.9, 4.6), midTo(4.6, 1.9), midTo(4.6, -1.9), midTo(1.9, -4.6), midTo(-1.9, -4.6), midTo(-4.6, -1.9),
    midTo(-4.6, 1.9), midTo(-1.9, 4.6), midEnd(1.9, 4.6),
    midTo(-1.6, -2.4), midEnd(-1.6, 2.4),
    midTo(-1.6, 0), midEnd(1.6, 0),
    midTo(1.6, -2.4), midLast(1.6, 2.4),

    // 12, intersection
    midTo(-4.16, -2.4), midTo(0, 4.8), midTo(4.16, -2.4), midLast(-4.16, -2.4),

    // 13, compulsory reporting point
    midTo(-4.16, -2.4), midTo(0, 4.8), midTo(4.16, -2.4), midEnd(-4.16, -2.4),
    midTo(-2.1, -1.2), midTo(0, 2.4), midTo(2.1, -1.2), midLast(-2.1, -1.2),

    // 14, obstacle
    midTo(-2.6, -0.57), midTo(0, 8), midEnd(2.6, -0.57),
    midTo(-0.62, -0.46), midTo(0, 0.68), midTo(0.62, -0.46), midLast(-0.62, -0.46),

    // 15, obstacle, lit
    midTo(-2.6, -0.57), midTo(0, 8), midEnd(2.6, -0.57),
    midTo(-0.62, -0.46), midTo(0, 0.68), midTo(0.62, -0.46), midEnd(-0.62, -0.46),
    midTo(0, 9.5), midEnd(0, 12.015),
    midTo(-1.3, 8.8), midEnd(-3.1, 10.6),
    midTo(1.3, 8.8), midLast(3.1, 10.6),

    // 16, group of obstacles
    midTo(-4.6, -0.57), midTo(-2.3, 8), midTo(0, 2.3), midTo(2.3, 8), midEnd(4.6, -0.57),
    midTo(-0.62, -0.46), midTo(0, 0.68), midTo(0.62, -0.46), midLast(-0.62, -0.46),

    // 17, final approach fix
    midTo(-1.9, 4.6), midTo(1.9, 4.6), midTo(-1.9, -4.6), midTo(1.9, -4.6), midEnd(-1.9, 4.6),
    midTo(-4.6, 1.9), midTo(-4.6, -1.9), midTo(4.6, 1.9), midTo(4.6, -1.9), midLast(-4.6, 1.9),

    // 18, holding
    midTo(3, 2.4), midTo(4.6, 0.8), midTo(4.6, -0.8), midTo(3, -2.4), midTo(-3, -2.4), midTo(-4.6, -0.8),
    midTo(-4.6, 0.8), midTo(-3, 2.4), midEnd(3, 2.4),
    midTo(-0.9, 4.2), midTo(0.9, 2.4), midLast(-0.9, 0.6),

    // 19, aircraft
    midTo(0, 4.6), midEnd(0, -4.6),
    midTo(-4.6, -0.8), midTo(0, 1.5), midEnd(4.6, -0.8),
    midTo(-1.9, -4.2), midLast(1.9, -4.2),

    // 20, runway
    midTo(-1.5, 4.6), midEnd(-1.5, -4.6),
    midTo(1.5, 4.6), midLast(1.5, -4.6),

    // 21, arrow up
    to(4.46, 0), end(4.46, 13.69),
    to(1.12, 10.27), to(4.46, 13.69), last(7.80, 10.27),

    // 22, arrow right
    to(0, 6.85), end(8.92, 6.85),
    to(5.50, 10.27), to(8.92, 6.85), last(5.50, 3.42),

    // 23, arrow down
    to(4.46, 13.69), end(4.46, 0),
    to(1.12, 3.42), to(4.46, 0), last(7.80, 3.42),

    // 24, arrow left
    to(8.92, 6.85), end(0, 6.85),
    to(3.42, 10.27), to(0, 6.85), last(3.42, 3.42),

    // 25, triangle, point down
    midTo(-4.16, 2.4), midTo(0, -4.8), midTo(4.16, 2.4), midLast(-4.16, 2.4),

    // 26, triangle, point left
    midTo(2.4, 4.16), midTo(-4.6, 0), midTo(2.4, -4.16), midLast(2.4, 4.16),

    // 27, triangle, point right
    midTo(-2.4, 4.16), midTo(4.6, 0), midTo(-2.4, -4.16), midLast(-2.4, 4.16),

    // 28, degree
    to(4.46, 13.69), to(2.23, 13.69), to(1.12, 11.41), to(2.23, 9.13), to(4.46, 9.13), to(5.58, 11.41), last(4.46, 13.69),

    // 29, angle
    to(8.92, 11.41), to(0, 2.28), last(8.92, 2.28),

    // 30, check mark
    to(0, 5.71), to(3.35, 2.28), last(8.92, 11.41),

    // 31, overline
    to(0, 15.97), last(8.92, 15.97),

    // 32, space
    last(0, 0),

    // !
    to(4.46, 13.69), end(4.46, 4.56),
    to(3.84, 0), to(4.46, 1.14), to(5.08, 0), last(3.84, 0),

    // "
    to(2.79, 13.69), end(2.79, 10.27),
    to(6.13, 13.69), last(6.13, 10.27),

    // #
    to(2.23, 0), end(3.35, 13.69),
    to(5.58, 0), end(6.69, 13.69),
    to(0, 4.56), end(8.92, 4.56),
    to(0, 9.13), last(8.92, 9.13),

    // $
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 9.13), to(8.92, 4.56), to(8.92, 2.28),
    to(6.69, 0), to(2.23, 0), end(0, 2.28),
    to(4.46, 15.97), last(4.46, -2.28),

    // %
    to(0, 0), end(8.92, 13.69),
    to(2.1, 13.69), to(0, 11.41), to(2.1, 9.13), to(4.2, 11.41), end(2.1, 13.69),
    to(6.82, 4.56), to(4.72, 2.28), to(6.82, 0), to(8.92, 2.28), last(6.82, 4.56),

    // &
    to(8.92, 0), to(1.12, 11.41), to(3.35, 13.69), to(5.58, 11.41), to(0, 4.56), to(0, 2.28), to(2.23, 0),
    to(5.58, 0), last(8.92, 4.56),

    // '
    to(4.46, 13.69), last(4.46, 10.27),

    // (
    to(6.13, 15.97), to(3.35, 11.41), to(3.35, 2.28), last(6.13, -2.28),

    // )
    to(2.79, 15.97), to(5.58, 11.41), to(5.58, 2.28), last(2.79, -2.28),

    // *
    to(4.46, 11.41), end(4.46, 2.28),
    to(0.5, 9.13), end(8.42, 4.56),
    to(0.5, 4.56), last(8.42, 9.13),

    // +
    to(0, 6.85), end(8.92, 6.85),
    to(4.46, 11.41), last(4.46, 2.28),

    // ,
    to(5.03, 1.14), last(3.35, -2.28),

    // -
    to(1.12, 6.85), last(7.80, 6.85),

    // .
    to(3.84, 0), to(4.46, 1.14), to(5.08, 0), last(3.84, 0),

    // /
    to(0, 0), last(8.92, 13.69),

    // 0
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    to(8.92, 2.28), to(8.92, 11.41), last(0, 2.28),

    // 1
    to(1.12, 10.27), to(4.46, 13.69), end(4.46, 0),
    to(0, 0), last(8.92, 0),

    // 2
    to(0, 11.41), to(2.23, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 9.13), to(0, 0), last(8.92, 0),

    // 3
    to(1.12, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 9.13), to(6.69, 6.85), to(8.92, 4.56), to(8.92, 2.28),
    to(6.69, 0), end(1.12, 0),
    to(6.69, 6.85), last(3.35, 6.85),

    // 4
    to(6.69, 0), to(6.69, 13.69), to(0, 4.56), last(8.92, 4.56),

    // 5
    to(8.92, 13.69), to(0, 13.69), to(0, 7.98), to(6.69, 7.98), to(8.92, 5.71), to(8.92, 2.28), to(6.69, 0), last(0, 0),

    // 6
    to(7.80, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0), to(8.92, 2.28),
    to(8.92, 5.71), to(6.69, 7.98), last(0, 7.98),

    // 7
    to(0, 13.69), to(8.92, 13.69), last(3.35, 0),

    // 8
    to(2.23, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 9.13), to(0, 4.56), to(0, 2.28), to(2.23, 0),
    to(6.69, 0), to(8.92, 2.28), to(8.92, 4.56), to(0, 9.13), to(0, 11.41), last(2.23, 13.69),

    // 9
    to(1.12, 0), to(6.69, 0), to(8.92, 2.28), to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41),
    to(0, 7.98), to(2.23, 5.71), last(8.92, 5.71),

    // :
    to(3.84, 7.98), to(4.46, 9.12), to(5.08, 7.98), end(3.84, 7.98),
    to(3.84, 0), to(4.46, 1.14), to(5.08, 0), last(3.84, 0),

    // ;
    to(3.84, 7.98), to(4.46, 9.12), to(5.08, 7.98), end(3.84, 7.98),
    to(5.03, 1.14), last(3.35, -2.28),

    // <
    to(8.92, 11.41), to(0, 6.85), last(8.92, 2.28),

    // =
    to(0, 9.13), end(8.92, 9.13),
    to(0, 4.56), last(8.92, 4.56),

    // >
    to(0, 11.41), to(8.92, 6.85), last(0, 2.28),

    // ?
    to(0, 11.41), to(2.23, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(4.46, 6.85), end(4.46, 4.56),
    to(3.84, 0), to(4.46, 1.14), to(5.08, 0), last(3.84, 0),

    // @
    to(6.13, 4.56), to(6.13, 9.13), to(2.79, 9.13), to(2.79, 4.56), to(8.92, 4.56), to(8.92, 11.41), to(6.69, 13.69),
    to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), last(8.92, 0),

    // A
    to(0, 0), to(0, 11.41), to(2.23, 13.69), to(6.69, 13.69), to(8.92, 11.41), end(8.92, 0),
    to(0, 6.85), last(8.92, 6.85),

    // B
    to(0, 6.85), to(6.69, 6.85), to(8.92, 9.13), to(8.92, 11.41), to(6.69, 13.69), to(0, 13.69), to(0, 0),
    to(6.69, 0), to(8.92, 2.28), to(8.92, 4.56), last(6.69, 6.85),

    // C
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    last(8.92, 2.28),

    // D
    to(0, 0), to(0, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 2.28), to(6.69, 0), last(0, 0),

    // E
    to(8.92, 13.69), to(0, 13.69), to(0, 0), end(8.92, 0),
    to(0, 6.85), last(6.69, 6.85),

    // F
    to(8.92, 13.69), to(0, 13.69), end(0, 0),
    to(0, 6.85), last(6.69, 6.85),

    // G
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(8.92, 0),
    to(8.92, 6.85), last(4.46, 6.85),

    // H
    to(0, 13.69), end(0, 0),
    to(0, 6.85), end(8.92, 6.85),
    to(8.92, 13.69), last(8.92, 0),

    // I
    to(2.23, 13.69), end(6.69, 13.69),
    to(4.46, 13.69), end(4.46, 0),
    to(2.23, 0), last(6.69, 0),

    // J
    to(8.92, 13.69), to(8.92, 2.28), to(6.69, 0), last(1.12, 0),

    // K
    to(0, 13.69), end(0, 0),
    to(8.92, 13.69), to(0, 5.71), last(8.92, 0),

    // L
    to(0, 13.69), to(0, 0), last(8.92, 0),

    // M
    to(0, 0), to(0, 13.69), to(4.46, 6.85), to(8.92, 13.69), last(8.92, 0),

    // N
    to(0, 0), to(0, 13.69), to(8.92, 0), last(8.92, 13.69),

    // O
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    to(8.92, 2.28), last(8.92, 11.41),

    // P
    to(0, 0), to(0, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 9.13), to(6.69, 6.85), last(0, 6.85),

    // Q
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    to(8.92, 2.28), end(8.92, 11.41),
    to(5.58, 3.42), last(10.04, -1.14),

    // R
    to(0, 0), to(0, 13.69), to(6.69, 13.69), to(8.92, 11.41), to(8.92, 9.13), to(6.69, 6.85), end(0, 6.85),
    to(4.46, 6.85), last(8.92, 0),

    // S
    to(8.92, 11.41), to(6.69, 13.69), to(2.23, 13.69), to(0, 11.41), to(0, 9.13), to(8.92, 4.56), to(8.92, 2.28),
    to(6.69, 0), to(2.23, 0), last(0, 2.28),

    // T
    to(0, 13.69), end(8.92, 13.69),
    to(4.46, 13.69), last(4.46, 0),

    // U
    to(0, 13.69), to(0, 2.28), to(2.23, 0), to(6.69, 0), to(8.92, 2.28), last(8.92, 13.69),

    // V
    to(0, 13.69), to(4.46, 0), last(8.92, 13.69),

    // W
    to(0, 13.69), to(2.23, 0), to(4.46, 9.13), to(6.69, 0), last(8.92, 13.69),

    // X
    to(0, 0), end(8.92, 13.69),
    to(0, 13.69), last(8.92, 0),

    // Y
    to(0, 13.69), to(4.46, 6.85), end(8.92, 13.69),
    to(4.46, 6.85), last(4.46, 0),

    // Z
    to(0, 13.69), to(8.92, 13.69), to(0, 0), last(8.92, 0),

    // [
    to(6.13, 15.97), to(3.35, 15.97), to(3.35, -2.28), last(6.13, -2.28),

    // backslash
    to(0, 13.69), last(8.92, 0),

    // ]
    to(2.79, 15.97), to(5.58, 15.97), to(5.58, -2.28), last(2.79, -2.28),

    // ^
    to(1.12, 9.13), to(4.46, 13.69), last(7.80, 9.13),

    // _
    to(0, -2.28), last(8.92, -2.28),

    // `
    to(2.23, 13.69), last(5.58, 10.27),

    // a
    to(1.12, 9.13), to(6.69, 9.13), to(8.92, 6.85), to(8.92, 0), to(2.23, 0), to(0, 1.71), to(0, 3.42),
    to(2.23, 5.13), last(8.92, 5.13),

    // b
    to(0, 13.69), to(0, 0), to(6.69, 0), to(8.92, 2.28), to(8.92, 6.85), to(6.69, 9.13), last(0, 9.13),

    // c
    to(7.80, 9.13), to(2.23, 9.13), to(0, 6.85), to(0, 2.28), to(2.23, 0), last(7.80, 0),

    // d
    to(8.92, 13.69), to(8.92, 0), to(2.23, 0), to(0, 2.28), to(0, 6.85), to(2.23, 9.13), last(8.92, 9.13),

    // e
    to(0, 4.56), to(8.92, 4.56), to(8.92, 6.85), to(6.69, 9.13), to(2.23, 9.13), to(0, 6.85), to(0, 2.28),
    to(2.23, 0), last(7.80, 0),

    // f
    to(7.80, 13.69), to(5.58, 13.69), to(3.35, 11.41), end(3.35, 0),
    to(1.12, 9.13), last(6.69, 9.13),

    // g
    to(8.92, 0), to(2.23, 0), to(0, 2.28), to(0, 6.85), to(2.23, 9.13), to(8.92, 9.13), to(8.92, -2.28),
    to(6.69, -4.56), last(1.12, -4.56),

    // h
    to(0, 13.69), end(0, 0),
    to(0, 9.13), to(6.69, 9.13), to(8.92, 6.85), last(8.92, 0),

    // i
    to(4.46, 9.13), end(4.46, 0),
    to(3.84, 12.55), to(4.46, 13.69), to(5.08, 12.55), last(3.84, 12.55),

    // j
    to(5.58, 9.13), to(5.58, -2.28), to(3.35, -4.56), end(1.12, -4.56),
    to(4.96, 12.55), to(5.58, 13.69), to(6.20, 12.55), last(4.96, 12.55),

    // k
    to(0, 13.69), end(0, 0),
    to(7.80, 9.13), to(0, 3.99), last(8.92, 0),

    // l
    to(3.35, 13.69), to(3.35, 2.28), to(5.58, 0), last(7.80, 0),

    // m
    to(0, 0), to(0, 9.13), to(6.69, 9.13), to(8.92, 6.85), end(8.92, 0),
    to(4.46, 9.13), last(4.46, 0),

    // n
    to(0, 0), to(0, 9.13), to(6.69, 9.13), to(8.92, 6.85), last(8.92, 0),

    // o
    to(8.92, 6.85), to(6.69, 9.13), to(2.23, 9.13), to(0, 6.85), to(0, 2.28), to(2.23, 0), to(6.69, 0),
    to(8.92, 2.28), last(8.92, 6.85),

    // p
    to(0, -4.56), to(0, 9.13), to(6.69, 9.13), to(8.92, 6.85), to(8.92, 2.28), to(6.69, 0), last(0, 0),

    // q
    to(8.92, -4.56), to(8.92, 9.13), to(2.23, 9.13), to(0, 6.85), to(0, 2.28), to(2.23, 0), last(8.92, 0),

    // r
    to(1.12, 9.13), end(1.12, 0),
    to(1.12, 5.71), to(4.46, 9.13), last(7.80, 9.13),

    // s
    to(7.80, 9.13), to(1.71, 9.13), to(0, 7.42), to(0, 5.99), to(8.92, 3.14), to(8.92, 1.71), to(7.25, 0), last(0.56, 0),

    // t
    to(3.35, 12.55), to(3.35, 2.28), to(5.58, 0), end(7.80, 0),
    to(1.12, 9.13), last(6.69, 9.13),

    // u
    to(0, 9.13), to(0, 2.28), to(2.23, 0), to(8.92, 0), last(8.92, 9.13),

    // v
    to(0, 9.13), to(4.46, 0), last(8.92, 9.13),

    // w
    to(0, 9.13), to(2.23, 0), to(4.46, 6.85), to(6.69, 0), last(8.92, 9.13),

    // x
    to(0, 0), end(8.92, 9.13),
    to(0, 9.13), last(8.92, 0),

    // y
    to(0, 9.13), end(4.46, 0),
    to(8.92, 9.13), last(2.23, -4.56),

    // z
    to(0, 9.13), to(8.92, 9.13), to(0, 0), last(8.92, 0),

    // {
    to(6.69, 15.97), to(4.46, 14.83), to(4.46, 7.98), to(2.23, 6.85), to(4.46, 5.71), to(4.46, -1.14), last(6.69, -2.28),

    // |
    to(4.46, 18.25), last(4.46, -4.56),

    // }
    to(2.23, 15.97), to(4.46, 14.83), to(4.46, 7.98), to(6.69, 6.85), to(4.46, 5.71), to(4.46, -1.14), last(2.23, -2.28),

    // ~
    to(0, 5.71), to(2.23, 7.98), to(6.69, 5.71), last(8.92, 7.98),

    // 127, a box struck through
    to(0, 0), to(0, 13.69), to(8.92, 13.69), to(8.92, 0), to(0, 0), last(8.92, 13.69),
};
// clang-format on

constexpr int countOf(std::int32_t operation)
{
    int count = 0;
    for (const CHARDEF_STRUCT& record : Glyphs) {
        count += record.operation == operation ? 1 : 0;
    }
    return count;
}

constexpr bool areInTheBox()
{
    for (const CHARDEF_STRUCT& record : Glyphs) {
        if (record.x < 0.0f || record.x > 11.16f || record.y < -4.56f || record.y > 20.0f) {
            return false;
        }
    }
    return true;
}

constexpr std::uint32_t CharacterCount = 128;

static_assert(countOf(3) == CharacterCount, "one end for each glyph");
static_assert(countOf(1) == 638 && countOf(2) == 76, "842 records with the ends of the glyphs");
static_assert(areInTheBox(), "no glyph reaches into its neighbour or the next line");

constexpr CHARSET_STRUCT Charset = {
    12884, CharacterCount, {20.53844f, 8.924760f, 0.0f, 4.564100f, 4.195400f, 3.0f}, 13.12016f, Glyphs};

} // namespace

const CHARSET_STRUCT& builtinCharset()
{
    return Charset;
}

} // namespace Tavik::OpenGL
