#include <tavik/opengl/Circle.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/LineStripsSimple.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/Polygon.h>
#include <tavik/opengl/Shader.h>
#include <tavik/opengl/Texture.h>
#include <tavik/opengl/TextureTerrain.h>
#include <tavik/opengl/TriangleStrip.h>
#include <tavik/opengl/VectorFont.h>
#include <tavik/opengl/Video.h>

#include <gtest/gtest.h>

using namespace Tavik::OpenGL;

TEST(GlHandlerNoContext, EverythingIsWithoutEffectAndAlive)
{
    testing::internal::CaptureStdout();
    GlHandler& gl = GlHandler::instance();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "GlHandler::GlHandler Error: Missing GL version\nGL version <> 0.0\nGL version <> 0.0\n");

    testing::internal::CaptureStdout();
    const int pattern[32] = {};
    gl.initStandardShaders();
    gl.activateShader(9);
    gl.setViewPort({64.0f, 64.0f});
    gl.activateViewPort();
    gl.setFloatVar("color", 1.0f, 1.0f, 1.0f, 1.0f);
    gl.setStippleVar("stipplePattern", pattern);
    EXPECT_EQ(gl.activeShaderHandle(), 0u);
    gl.deactivateShader();

    Shader shader(Shader::GeometryShader);
    EXPECT_EQ(shader.handle(), 0u);
    EXPECT_FALSE(shader.compile());
    ShaderProgram program;
    EXPECT_TRUE(program.attachShader(shader));
    EXPECT_FALSE(program.link());
    EXPECT_TRUE(program.use(true));
    EXPECT_EQ(program.uniformLocation("mvp"), -1);
    program.info();

    MatrixActivate();
    const std::vector<Tavik::Math::Vector2<float>> points = {{0.0f, 0.0f}, {1.0f, 1.0f}};
    LineStrips strips;
    strips.addLineStrip(points);
    strips.init();
    strips.setData();
    strips.calcPositions();
    strips.render(-1);
    LineStripsSimple simple;
    simple.addLineStrip(points);
    simple.render(-1);
    LineLoops loops;
    loops.addLineLoop(points);
    loops.render(1.0);
    Lines lines;
    lines.setRect(1, 1);
    lines.render();
    lines.clear();
    TriangleStrip strip;
    strip.setRect(1, 1);
    strip.init();
    strip.render();
    Circle circle;
    circle.setCircle(1.0, 8);
    circle.render();
    Tesselator tesselator; // needs none
    for (const Tavik::Math::Vector2<float> corner : {points[0], points[1], {1.0f, 0.0f}}) {
        tesselator.addVertex(corner);
    }
    Tesselator::TessPolygon triangle = tesselator.tesselate();
    EXPECT_EQ(triangle.vertices().size(), 3u);
    Polygon polygon;
    polygon.addTessPolygon(std::move(triangle));
    polygon.render();
    polygon.clear();
    const unsigned short texel[4] = {};
    TextureTerrain terrain;
    EXPECT_FALSE(terrain.loadNormals(texel, 1, 1, 0x1908)); // GL_RGBA
    terrain.addVertex(Tavik::Math::Vector3<float>(), {0.0f, 0.0f});
    terrain.setData();
    terrain.render();
    terrain.clear();
    VectorFont font;
    font.addText("A", {}, 10.0, VectorFont::TopLeft);
    EXPECT_EQ(font.vertexCount(), 8u);
    font.render();
    font.setData();
    font.renderFont("A", 10.0, VectorFont::TopLeft);
    font.clear();
    const unsigned char pixel[4] = {};
    Texture texture;
    EXPECT_FALSE(texture.load(pixel, 1, 1, 0x1908));
    texture.addVertex(Tavik::Math::Vector3<float>(), {0.0f, 0.0f});
    texture.setData();
    texture.render();
    Video video;
    video.init(1, 1);
    video.putFrame(pixel);
    video.render();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
