#version 330 core

// Draws one colour, or through the holes of a 32 x 32 pattern that is fixed to the window.

in vec4 fragmentColor;

uniform int stippleUse;
uniform int stipplePattern[32]; // one row each, lowest row first; the lowest bit is the leftmost column

out vec4 pixelColor;

void main()
{
    if (stippleUse == 1) {
        int column = int(gl_FragCoord.x) & 31;
        int row = int(gl_FragCoord.y) & 31;
        if (((stipplePattern[row] >> column) & 1) == 0) {
            discard;
        }
    }
    pixelColor = fragmentColor;
}
