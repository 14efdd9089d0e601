#include <tavik/opengl/StandardPrograms.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/BuiltinShaders.h>

namespace Tavik::OpenGL {

std::vector<StandardProgram> standardPrograms()
{
    const ShaderSource none = {nullptr, 0};
    const ShaderSource primitiveColor = {ShaderPrimitiveColor_vert, ShaderPrimitiveColor_vert_len};
    const ShaderSource line = {ShaderLine_vert, ShaderLine_vert_len};
    const ShaderSource lineColor = {ShaderLineColor_vert, ShaderLineColor_vert_len};
    const ShaderSource segments = {ShaderLine_geom, ShaderLine_geom_len};
    const ShaderSource polylines = {ShaderLineAdjacency_geom, ShaderLineAdjacency_geom_len};
    const ShaderSource lineFragment = {ShaderLine_frag, ShaderLine_frag_len};

    const AttributeLocation vertex = {"vertex", VertexLocation};
    const AttributeLocation vertexUV = {"vertexUV", TextureCoordinateLocation};
    const AttributeLocation normals = {"normals", NormalsLocation};
    const AttributeLocation color = {"color", ColorLocation};
    const AttributeLocation position = {"position", PositionLocation};

    return {
        {VertexColorProgram,
         {ShaderPrimitive_vert, ShaderPrimitive_vert_len},
         {ShaderPrimitive_frag, ShaderPrimitive_frag_len},
         none,
         {vertex, color}},
        {PatternProgram, primitiveColor, {ShaderPolygon_frag, ShaderPolygon_frag_len}, none, {vertex}},
        {OneColorProgram, primitiveColor, {ShaderPrimitiveColor_frag, ShaderPrimitiveColor_frag_len}, none, {vertex}},
        {TextureProgram,
         {ShaderTexture_vert, ShaderTexture_vert_len},
         {ShaderTexture_frag, ShaderTexture_frag_len},
         none,
         {vertex, vertexUV}},
        {TextureTerrainProgram,
         {ShaderTextureTerrain_vert, ShaderTextureTerrain_vert_len},
         {ShaderTextureTerrain_frag, ShaderTextureTerrain_frag_len},
         none,
         {vertex, vertexUV, normals}},
        {VectorFontProgram,
         {ShaderVectorFont_vert, ShaderVectorFont_vert_len},
         {ShaderVectorFont_frag, ShaderVectorFont_frag_len},
         none,
         {vertex}},
        {TextureFontProgram,
         {ShaderTextureFont_vert, ShaderTextureFont_vert_len},
         {ShaderTextureFont_frag, ShaderTextureFont_frag_len},
         none,
         {vertex, vertexUV}},
        {TextureFontSdfProgram,
         {ShaderTextureFontSdf_vert, ShaderTextureFontSdf_vert_len},
         {ShaderTextureFontSdf_frag, ShaderTextureFontSdf_frag_len},
         none,
         {vertex, vertexUV}},
        {SegmentProgram, line, lineFragment, segments, {vertex, position}},
        {PolylineProgram, line, lineFragment, polylines, {vertex, position}},
        {PolylineColorProgram, lineColor, lineFragment, polylines, {vertex, color, position}},
    };
}

} // namespace Tavik::OpenGL
