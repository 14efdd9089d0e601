#version 330 core

in vec4 vertex;
in vec4 color;

uniform mat4 mvp;

out vec4 fragmentColor;

void main()
{
    gl_Position = mvp * vertex;
    fragmentColor = color;
}
