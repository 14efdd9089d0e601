# Script: turns one GLSL file into a C++ source that defines it as a byte array.
#   cmake -DINPUT=ShaderLine.vert -DOUTPUT=ShaderLine_vert.cpp -DSYMBOL=ShaderLine_vert -P EmbedShader.cmake
file(READ ${INPUT} hex HEX)
string(LENGTH "${hex}" digits)
math(EXPR length "${digits} / 2")
string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n    " bytes "${bytes}")
file(WRITE ${OUTPUT} "#include <tavik/opengl/BuiltinShaders.h>

const unsigned char ${SYMBOL}[] = {
    ${bytes}};
const unsigned int ${SYMBOL}_len = ${length};
")
