#pragma once

namespace Gallery {

/// Size in pixels of the area that each exhibit draws into, (0, 0) in its lower left corner.
constexpr int ExhibitWidth = 400;
constexpr int ExhibitHeight = 300;

/// Each function draws one exhibit with the current matrix, and leaves that matrix as it was.

void drawLines();
void drawLineStrips();
void drawLineStripsSimple();
void drawLineLoops();

void drawTriangleStrip();
void drawPolygon();
void drawCircle();
void drawMatrixStack();

void drawTexture();
void drawTextureTerrain();
void drawVideo();
void drawDistanceField();

void drawVectorFont();
void drawVectorFontSymbols();
void drawTextureFont();
void drawTextureFontSdf();

} // namespace Gallery
