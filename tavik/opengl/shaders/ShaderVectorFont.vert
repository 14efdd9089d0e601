#version 330 core

in vec4 vertex;

uniform mat4 mvp;
uniform vec4 color;
uniform vec3 offset; // where the glyph stands, in the units of vertex

out vec4 fragmentColor;

void main()
{
    gl_Position = mvp * vec4(vertex.xyz + offset, vertex.w);
    fragmentColor = color;
}
