#include <tavik/crypto/CCRC32.h>
#include <tavik/filesystem/Directory.h>
#include <tavik/geodetic/EarthModel.h>
#include <tavik/image/PngReader.h>
#include <tavik/math/PlaneGeometry.h>
#include <tavik/misc/StringFields.h>
#include <tavik/network/SocketUdp.h>
#include <tavik/opengl/BuiltinShaders.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/xml/XmlDocument.h>

#include <cmath>
#include <cstdio>
#include <string>

// One question to each folder of the library that has its answer without a window.
int main()
{
    // One degree along a meridian is sixty nautical miles.
    const double metres = Tavik::Geodetic::calcDistance(47.0, 11.0, 48.0, 11.0);
    std::printf("%.3f m\n", metres);

    const unsigned char digits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    Tavik::Image::PngReader::ImageRGBA picture;
    Tavik::OpenGL::LineStrips route;
    route.addVertex(Tavik::Math::Vector2<float>(1.0f, 2.0f));
    const bool isGood = std::fabs(metres - 111120.0) < 0.01 && CCRC32().FullCRC(digits, sizeof digits) == 0xCBF43926 &&
                        Tavik::FileSystem::Directory::exists("/") &&
                        !Tavik::Image::PngReader::readFileRGBA("no such file", picture) &&
                        Tavik::Math::pointInPolygon({1.0, 1.0}, {{0.0, 0.0}, {0.0, 3.0}, {3.0, 0.0}}) &&
                        Tavik::Misc::StringCount("a/b/c", "/") == 2 && Tavik::Network::SocketUdp().localPort() == -1 &&
                        std::string(reinterpret_cast<const char*>(ShaderLine_vert), 8) == "#version" &&
                        !Tavik::XML::XmlDocument().root().valid();
    return isGood ? 0 : 1;
}
