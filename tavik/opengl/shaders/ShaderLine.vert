#version 330 core

in vec4 vertex;
in float position; // running length along the line, pixels

uniform mat4 mvp;
uniform vec4 color;

out vec4 fragmentColor;
out float positionV;

void main()
{
    gl_Position = mvp * vertex;
    fragmentColor = color;
    positionV = position;
}
