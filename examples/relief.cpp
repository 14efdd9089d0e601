// Shaded relief round a point, from a folder of terrain tiles.

#include <support/FrameLoop.h>
#include <support/MadeTerrain.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/HeightMap.h>
#include <tavik/misc/CmdLine.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/TerrainTexels.h>
#include <tavik/opengl/TextureTerrain.h>

#include <GL/gl.h>

#include <cstdlib>

using namespace Tavik;

constexpr unsigned int Columns = 480;
constexpr unsigned int Rows = 300;
constexpr double MetresPerPixel = 150.0; // 72 by 45 km

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--terrain", "folder of DTED level 1 or zipped SRTM tiles; empty for invented ones", "");
    options.addParameter("--lat", "latitude of the middle, degrees", "45.75");
    options.addParameter("--lon", "longitude of the middle, degrees", "-31.2");
    options.addParameter("--screenshot", "write a picture and stop", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string folder, lat, lon, screenshot;
    options.getParameter("--terrain", folder);
    options.getParameter("--lat", lat);
    options.getParameter("--lon", lon);
    options.getParameter("--screenshot", screenshot);

    Geodetic::HeightMap terrain;
    terrain.setDataPath(folder.empty() ? Support::MadeTerrain::cachedDirectory() : folder);
    terrain.loadThread(); // finds the tiles; a query reads the one that it needs

    // A normal and a height for each pixel, the northernmost row first.
    std::vector<unsigned short> texels;
    for (unsigned int row = 0; row < Rows; ++row) {
        for (unsigned int column = 0; column < Columns; ++column) {
            const double east = (column + 0.5 - Columns / 2.0) * MetresPerPixel;
            const double north = (Rows / 2.0 - row - 0.5) * MetresPerPixel;
            double pixelLat = 0.0, pixelLon = 0.0;
            Geodetic::grid2LatLong(std::atof(lat.c_str()), std::atof(lon.c_str()), east, north, pixelLat, pixelLon);
            const double metres = terrain.getAltitude(pixelLat, pixelLon, true, false);
            unsigned char x = 0, y = 0, z = 0;
            terrain.getNormal(pixelLat, pixelLon, true, false, x, y, z);
            const OpenGL::TerrainTexel texel = OpenGL::terrainTexel(x, y, z, static_cast<float>(metres));
            texels.insert(texels.end(), texel.begin(), texel.end());
        }
    }

    Support::Window window("Relief", Columns, Rows, Support::visibilityFor(screenshot));
    OpenGL::TextureTerrain relief;
    relief.loadNormals(texels.data(), Columns, Rows, GL_RGBA);
    // The rectangle in kilometres: west to east, and south before north as a strip of triangles wants it.
    for (const float east : {-36.0f, 36.0f}) {
        const float u = east < 0.0f ? 0.0f : 1.0f;
        relief.addVertex(Math::Vector3<float>(east, -22.5f, 0.0f), {u, 1.0f});
        relief.addVertex(Math::Vector3<float>(east, 22.5f, 0.0f), {u, 0.0f});
    }
    return Support::showFrames(window, screenshot, [&relief] {
        OpenGL::MatrixScale(1.0 / 36.0, 1.0 / 22.5, 1.0);
        relief.render();
    });
}
