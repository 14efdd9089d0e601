#include <moving_map/HeightRamp.h>
#include <moving_map/Palette.h>
#include <moving_map/TerrainCache.h>
#include <support/Area.h>
#include <tavik/opengl/MatrixStack.h>

#include "../opengl/GlTest.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace MovingMap;
using Tavik::Support::Picture;

namespace {

constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();
constexpr Color Background(0.6f, 0.0f, 0.6f, 1.0f);

class ReliefTest : public GlTest
{
protected:
    /// A view whose cells are three pixels wide.
    void look(int level, double upDegrees)
    {
        view.setArea(Size, Size, {0.4f * Size, 0.55f * Size});
        view.setCentre({45.3, 7.2});
        view.setMetresPerPixel(92.766 * (1 << level) / 3.0);
        view.setUp(upDegrees);
    }

    Picture draw(int level, const HeightSource& source, bool withContours)
    {
        const Tavik::Support::Area area = {0, 0, Size, Size};
        area.fill(Background);
        area.activate();
        HeightRamp ramp;
        for (const BlockKey& key : blocksInView(view, level, 0.0)) {
            TerrainBlock block{HeightRaster(key, source)};
            Tavik::OpenGL::MatrixSet(view.blockMatrix(key));
            block.relief.upload();
            block.relief.render(lightOnMap(view.up()), ramp.name());
            if (withContours) {
                block.contours.render();
            }
        }
        return window().readPicture();
    }

    MapView view;
};

bool isBackground(Picture::Pixel p)
{
    return p[0] == 153 && p[1] == 0 && p[2] == 153;
}

} // namespace

TEST_F(ReliefTest, ColoursLieWhereTheHeightsAreWithoutSeams)
{
    for (const int level : {0, 1, 3, 6}) {
        for (const double up : {0.0, 33.0, 200.0}) {
            look(level, up);
            // A straight coast that runs across several blocks, and terrain that ends in the middle of one.
            const double pixel = view.metresPerPixel() / 111319.49;
            const double cell = BlockKey{level, 0, 0}.edgeDegrees() / BlockKey::Cells;
            const double end = std::round((7.2 + 40.0 * pixel) / cell) * cell;
            const auto height = [&](double lat, double lon) {
                const double inland = (0.9 * (lat - 45.3) + 0.3 * (lon - 7.2)) / pixel;
                return lon > end + 1e-9 ? Unknown : CoastMetres + 8.0 * inland;
            };
            const Picture picture = draw(level, height, false);
            int wrong = 0;
            for (int y = 0; y < Size; ++y) {
                for (int x = 0; x < Size; ++x) {
                    const Position place =
                        view.toPosition({static_cast<float>(x) + 0.5f, static_cast<float>(Size - y) - 0.5f});
                    const double toEnd = (end - place.lonDegrees) * std::cos(45.3 * 0.0174533) / pixel;
                    const double inland = height(place.latDegrees, std::min(place.lonDegrees, end)) - CoastMetres;
                    if (std::abs(toEnd) < 0.75 || (toEnd > 0.0 && std::abs(inland) < 6.0)) {
                        continue; // three quarters of a pixel
                    }
                    const Picture::Pixel p = picture.pixel(x, y);
                    const bool right =
                        toEnd < 0.0 ? isBackground(p) : !isBackground(p) && (inland > 0.0 ? p[1] > p[2] : p[2] > p[1]);
                    wrong += right ? 0 : 1;
                }
            }
            EXPECT_EQ(wrong, 0) << "level " << level << " up " << up;
        }
    }
}

TEST_F(ReliefTest, CoastIsDrawnOnTheEdgeOfTheBlue)
{
    look(2, 70.0);
    const auto height = [&](double lat, double lon) {
        return 3e4 * (std::sin(9.0 * (lat - 45.3)) + 0.5 * (lon - 7.2));
    };
    const Picture without = draw(2, height, false);
    const Picture with = draw(2, height, true);
    int coast = 0;
    for (int y = 2; y < Size - 2; ++y) {
        for (int x = 2; x < Size - 2; ++x) {
            const auto isBlue = [&](int dx, int dy) {
                const Picture::Pixel p = without.pixel(x + dx, y + dy);
                return p[2] > p[1];
            };
            // Where blue and green meet, the line hides both.
            if (isBlue(-1, 0) != isBlue(1, 0) && isBlue(0, -1) != isBlue(0, 1)) {
                ++coast;
                const Picture::Pixel p = with.pixel(x, y);
                EXPECT_GT(p[2], 180) << x << " " << y;
            }
        }
    }
    EXPECT_GT(coast, 30);
}

TEST_F(ReliefTest, LightComesFromTheUpperLeftAndTheSeaIsFlat)
{
    for (const double up : {0.0, 90.0, 215.0}) {
        look(2, up);
        const auto peak = [&](double lat, double lon) {
            const MapView::Pixel place = view.toPixel({lat, lon});
            return 2500.0 - 40.0 * std::hypot(place.x - 64.0f, place.y - 64.0f);
        };
        const Picture picture = draw(2, peak, false);
        const auto brightness = [&](int x, int y) { return picture.pixel(x, y)[0] + picture.pixel(x, y)[1]; };
        EXPECT_GT(brightness(54, 54), brightness(74, 54) + 10) << "up " << up;
        EXPECT_NEAR(brightness(74, 54), brightness(54, 74), 12) << "up " << up;
        EXPECT_GT(brightness(54, 74), brightness(74, 74) + 10) << "up " << up;
        const Picture sea = draw(
            2, [](double lat, double) { return -1.5 + std::sin(1e4 * lat); }, false);
        EXPECT_EQ(Tavik::Support::comparePictures(sea, Picture(Size, Size, sea.pixel(0, 0)), 0).pixelsOver, 0u);
    }
}

TEST(Relief, BlocksSideBySideAgreeOnTheirEdge)
{
    const auto hills = [](double lat, double lon) {
        return 800.0 + 300.0 * std::sin(40.0 * lat) * std::cos(31.0 * lon);
    };
    const auto relief = [&](const BlockKey& key) {
        const HeightRaster raster(key, hills);
        return Relief(raster, HeightGrid(raster));
    };
    for (int level = 0; level <= BlockKey::HighestLevel; ++level) {
        const Relief middle = relief({level, 5, -3});
        const Relief east = relief({level, 5, -2});
        const Relief north = relief({level, 6, -3});
        const std::size_t last = middle.size - 1;
        for (std::size_t i = 0; i <= last; ++i) {
            for (std::size_t c = 0; c < 4; ++c) {
                const auto texel = [c](const Relief& r, std::size_t column, std::size_t row) {
                    return r.texels[(row * r.size + column) * 4 + c];
                };
                ASSERT_EQ(texel(middle, last, i), texel(east, 0, i)) << "level " << level << " row " << i;
                ASSERT_EQ(texel(middle, i, last), texel(north, i, 0)) << "level " << level << " column " << i;
            }
        }
    }
}
