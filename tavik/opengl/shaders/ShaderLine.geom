#version 330 core

// Widens one independent segment into a quad.
//
// Clip space spans two units across the view port, so one unit of clip space times the view port is half a pixel:
// lineWidth on each side of the centre line makes a band of lineWidth pixels.

layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;

in vec4 fragmentColor[];

uniform float lineWidth;
uniform vec2 viewPort;

out vec4 bandColor;
out float position;  // across the band, 0 to 1
out float positionG; // along the segment, pixels

const float LargestLength = 1.0e30;

void emitPair(vec3 center, vec3 offset, vec4 pairColor, float along)
{
    bandColor = pairColor;
    positionG = along;
    position = 0.0;
    gl_Position = vec4(center + offset, 1.0);
    EmitVertex();
    bandColor = pairColor;
    positionG = along;
    position = 1.0;
    gl_Position = vec4(center - offset, 1.0);
    EmitVertex();
}

void main()
{
    vec3 p0 = gl_in[0].gl_Position.xyz;
    vec3 p1 = gl_in[1].gl_Position.xyz;
    vec3 scale = vec3(viewPort, 1.0);
    vec3 along = (p1 - p0) * scale;
    float size = length(along);
    // A segment without length has no direction; nor has one that leads to NaN or infinity.
    if (!(size > 0.0 && size < LargestLength)) {
        return;
    }
    vec3 offset = vec3(-along.y, along.x, along.z) * (lineWidth / size) / scale;
    emitPair(p0, offset, fragmentColor[0], 0.0);
    emitPair(p1, offset, fragmentColor[1], 0.5 * size);
    EndPrimitive();
}
