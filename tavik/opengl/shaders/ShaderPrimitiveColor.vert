#version 330 core

in vec4 vertex;

uniform mat4 mvp;
uniform vec4 color;

out vec4 fragmentColor;

void main()
{
    gl_Position = mvp * vertex;
    fragmentColor = color;
}
