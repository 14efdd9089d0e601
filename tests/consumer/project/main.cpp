#include <tavik/geodetic/EarthModel.h>

#include <cmath>
#include <cstdio>

// One degree along a meridian is sixty nautical miles.
int main()
{
    const double metres = Tavik::Geodetic::calcDistance(47.0, 11.0, 48.0, 11.0);
    std::printf("%.3f m\n", metres);
    return std::fabs(metres - 111120.0) < 0.01 ? 0 : 1;
}
