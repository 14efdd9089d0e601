#pragma once

/// @file
/// The map symbols and signs of the stroke font VectorFont.

namespace Tavik::OpenGL {

/// Character codes of the built-in character set below the space.
///
/// They go into a text like any other character, alone or among others:
///
///     font.addText({VectorSymbol::Vor}, place, 12.0, VectorFont::MiddleCenter);
///     std::string latitude = "N40";
///     latitude += VectorSymbol::Degree;
///     latitude += "38'";
///
/// Map symbols, up to the runway, and triangles are drawn about the middle of their character cell, half the advance
/// and half the nominal height: alone and with the alignment MiddleCenter their centre (of an obstacle, its foot)
/// stands on the anchor, and stays there however the text is turned. They tell themselves apart from a size of about
/// 20 pixels. The other signs stand among capitals.
struct VectorSymbol
{
    /// The codes.
    enum Code : char
    {
        CrossedOval = 0,       ///< oval with a cross: shows a zero byte that got into a text
        WaypointFlyBy = 1,     ///< four-pointed star
        WaypointFlyOver = 2,   ///< four-pointed star in a circle
        Vor = 3,               ///< hexagon with a dot
        Dme = 4,               ///< square
        VorDme = 5,            ///< hexagon in a box
        Vortac = 6,            ///< hexagon with three heavy sides
        Tacan = 7,             ///< three lobes
        Ndb = 8,               ///< dot in a dashed circle
        MarkerBeacon = 9,      ///< lens, upright
        Airport = 10,          ///< circle with four spokes
        Heliport = 11,         ///< H in a circle
        Intersection = 12,     ///< triangle; also a reporting point on request
        ReportingPoint = 13,   ///< filled triangle: compulsory reporting point
        Obstacle = 14,         ///< peak over a dot
        ObstacleLit = 15,      ///< peak over a dot, with rays
        ObstacleGroup = 16,    ///< two peaks over a dot
        FinalApproachFix = 17, ///< Maltese cross
        Holding = 18,          ///< racetrack, turning right
        Aircraft = 19,         ///< seen from above, nose up
        Runway = 20,           ///< its two edges, upright
        ArrowUp = 21,          ///< as high as a capital: climbing
        ArrowRight = 22,       ///< as wide as a capital
        ArrowDown = 23,        ///< as high as a capital: descending
        ArrowLeft = 24,        ///< as wide as a capital
        TriangleDown = 25,     ///< pointing down; Intersection points up
        TriangleLeft = 26,     ///< pointing left
        TriangleRight = 27,    ///< pointing right
        Degree = 28,           ///< small circle at the top of capitals
        Angle = 29,            ///< of a descent, say
        CheckMark = 30,        ///< done
        Overline = 31,         ///< line above a capital
    };
};

} // namespace Tavik::OpenGL
