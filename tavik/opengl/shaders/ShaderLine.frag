#version 330 core

// Stipples a widened line along its length and softens its two edges.

in vec4 bandColor;
in float position;  // across the band, 0 to 1
in float positionG; // along the line, pixels

uniform int antialias;
uniform int lineStipple; // 32 bits, one for each pixel of length, lowest first; 0 draws solid

out vec4 colorx;

const float SoftEdge = 0.3;

void main()
{
    if (lineStipple != 0) {
        int bit = int(mod(positionG, 32.0)) & 31; // just below 0, mod() rounds up to 32
        if (((lineStipple >> bit) & 1) == 0) {
            discard;
        }
    }
    float alpha = 1.0;
    if (antialias != 0) {
        if (position < SoftEdge) {
            alpha = smoothstep(0.0, SoftEdge, position);
        } else if (position > 1.0 - SoftEdge) {
            alpha = 1.0 - smoothstep(1.0 - SoftEdge, 1.0, position);
        }
    }
    colorx = vec4(bandColor.rgb, bandColor.a * alpha);
}
