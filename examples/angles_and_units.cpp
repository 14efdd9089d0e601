// Where angles start and what numbers mean, in the library's own answers.

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Turns.h>
#include <tavik/math/PlaneGeometry.h>
#include <tavik/opengl/MatrixStack.h>

#include <cstdio>

using namespace Tavik;

int main()
{
    // Bearings, courses and headings: degrees clockwise from true north.
    std::printf("bearings from 0 N 0 E to the north, east, south, west: %.0f %.0f %.0f %.0f\n",
                Geodetic::calcBearing(0.0, 0.0, 1.0, 0.0), Geodetic::calcBearing(0.0, 0.0, 0.0, 1.0),
                Geodetic::calcBearing(0.0, 0.0, -1.0, 0.0), Geodetic::calcBearing(0.0, 0.0, 0.0, -1.0));
    std::printf("from heading 350 to 010: %.0f, the other way round: %.0f\n",
                Geodetic::getHeadingDifference(350.0, 10.0), Geodetic::getHeadingDifference(350.0, 10.0, false));

    // The plane: x metres east, y metres north. A degree of latitude is a little longer there than in distances.
    double x = 0.0, y = 0.0;
    Geodetic::latLong2Grid(47.0, 8.0, 48.0, 9.0, x, y);
    std::printf("48 N 9 E seen from 47 N 8 E: %.0f m east, %.0f m north\n", x, y);
    std::printf("a degree of latitude: %.0f m of distance, %.2f m in the plane\n",
                Geodetic::calcDistance(47.0, 8.0, 48.0, 8.0), Geodetic::MetresPerDegree);

    // Turns to the left are 0, to the right 1, and arcs go by degrees.
    bool limited = false;
    const auto arc = Geodetic::calcFlyByPoints({0.0, 0.0}, {0.0, 1000.0}, {1000.0, 1000.0}, 100.0, 2, limited);
    std::printf("a turn by 90 degrees has %zu points\n", arc.size());

    // Angles between vectors have no direction.
    std::printf("between (1, 0) and (0, 1), and back: %.0f %.0f\n", Math::angle({1.0f, 0.0f}, {0.0f, 1.0f}),
                Math::angle({0.0f, 1.0f}, {1.0f, 0.0f}));

    // Matrices turn counter-clockwise, so a symbol that points up turns to a heading by minus the heading.
    OpenGL::MatrixRotate(-90.0, 0.0, 0.0, 1.0);
    const Math::Vector3<float> nose = OpenGL::MatrixGet() * Math::Vector3<float>(0.0f, 1.0f, 0.0f);
    std::printf("up, turned to heading 090: %.0f %.0f\n", nose.x, nose.y);
    return 0;
}
