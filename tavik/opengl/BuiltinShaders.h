#pragma once

#include <tavik/Export.h>

/// @file
/// The GLSL 3.30 core sources of the built-in programs, for applications that build programs of their own from them.
///
/// Each array holds plain text without a terminating NUL; the companion with `_len` is its length in bytes. How the
/// sources combine into programs, and their attributes and uniforms, is told in GlHandler.h.
///
///     Shader vertex(Shader::VertexShader);
///     vertex.loadSource(ShaderLine_vert, ShaderLine_vert_len);

/// @{
/// A source, and its length in bytes.
extern TAVIK_API const unsigned char ShaderPrimitive_vert[];
extern TAVIK_API const unsigned int ShaderPrimitive_vert_len;
extern TAVIK_API const unsigned char ShaderPrimitive_frag[];
extern TAVIK_API const unsigned int ShaderPrimitive_frag_len;
extern TAVIK_API const unsigned char ShaderPrimitiveColor_vert[];
extern TAVIK_API const unsigned int ShaderPrimitiveColor_vert_len;
extern TAVIK_API const unsigned char ShaderPrimitiveColor_frag[];
extern TAVIK_API const unsigned int ShaderPrimitiveColor_frag_len;
extern TAVIK_API const unsigned char ShaderTexture_vert[];
extern TAVIK_API const unsigned int ShaderTexture_vert_len;
extern TAVIK_API const unsigned char ShaderTexture_frag[];
extern TAVIK_API const unsigned int ShaderTexture_frag_len;
extern TAVIK_API const unsigned char ShaderTextureTerrain_vert[];
extern TAVIK_API const unsigned int ShaderTextureTerrain_vert_len;
extern TAVIK_API const unsigned char ShaderTextureTerrain_frag[];
extern TAVIK_API const unsigned int ShaderTextureTerrain_frag_len;
extern TAVIK_API const unsigned char ShaderTextureFont_vert[];
extern TAVIK_API const unsigned int ShaderTextureFont_vert_len;
extern TAVIK_API const unsigned char ShaderTextureFont_frag[];
extern TAVIK_API const unsigned int ShaderTextureFont_frag_len;
extern TAVIK_API const unsigned char ShaderTextureFontSdf_vert[];
extern TAVIK_API const unsigned int ShaderTextureFontSdf_vert_len;
extern TAVIK_API const unsigned char ShaderTextureFontSdf_frag[];
extern TAVIK_API const unsigned int ShaderTextureFontSdf_frag_len;
extern TAVIK_API const unsigned char ShaderVectorFont_vert[];
extern TAVIK_API const unsigned int ShaderVectorFont_vert_len;
extern TAVIK_API const unsigned char ShaderVectorFont_frag[];
extern TAVIK_API const unsigned int ShaderVectorFont_frag_len;
extern TAVIK_API const unsigned char ShaderLine_vert[];
extern TAVIK_API const unsigned int ShaderLine_vert_len;
extern TAVIK_API const unsigned char ShaderLineColor_vert[];
extern TAVIK_API const unsigned int ShaderLineColor_vert_len;
extern TAVIK_API const unsigned char ShaderLine_geom[];
extern TAVIK_API const unsigned int ShaderLine_geom_len;
extern TAVIK_API const unsigned char ShaderLineAdjacency_geom[];
extern TAVIK_API const unsigned int ShaderLineAdjacency_geom_len;
extern TAVIK_API const unsigned char ShaderLine_frag[];
extern TAVIK_API const unsigned int ShaderLine_frag_len;
extern TAVIK_API const unsigned char ShaderPolygon_frag[];
extern TAVIK_API const unsigned int ShaderPolygon_frag_len;
/// @}
