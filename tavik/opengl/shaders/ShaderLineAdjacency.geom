#version 330 core

// Widens the segment p1-p2 of a polyline into a quad and closes the gaps at both joints with the directions of the
// neighbouring segments p0-p1 and p2-p3.
//
// Clip space spans two units across the view port, so one unit of clip space times the view port is half a pixel:
// lineWidth on each side of the centre line makes a band of lineWidth pixels.

layout(lines_adjacency) in;
layout(triangle_strip, max_vertices = 8) out;

in vec4 fragmentColor[];
in float positionV[];

uniform float lineWidth;
uniform float lfactor; // not read; applications may set it
uniform vec2 viewPort;

out vec4 bandColor;
out float position;  // across the band, 0 to 1
out float positionG; // running length, pixels

const float LargestLength = 1.0e30;

// Half the band's width at right angles to the segment; zero where the segment has no direction, being without length
// or leading to NaN or infinity.
vec3 bandOffset(vec3 start, vec3 end)
{
    vec3 scale = vec3(viewPort, 1.0);
    vec3 along = (end - start) * scale;
    float size = length(along);
    if (!(size > 0.0 && size < LargestLength)) {
        return vec3(0.0);
    }
    return vec3(-along.y, along.x, along.z) * (lineWidth / size) / scale;
}

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
    vec3 p2 = gl_in[2].gl_Position.xyz;
    vec3 p3 = gl_in[3].gl_Position.xyz;
    if (!(distance(p1, p2) < LargestLength)) {
        return; // NaN or infinity
    }

    // The end points of a strip come doubled, and points may repeat: a segment without direction takes its
    // neighbour's, which makes its joint exactly flat. Between two equal points only the joint is left to close.
    const vec3 none = vec3(0.0);
    vec3 first = bandOffset(p0, p1);
    vec3 middle = bandOffset(p1, p2);
    vec3 last = bandOffset(p2, p3);
    if (middle == none) {
        middle = first == none ? last : first;
    }
    if (middle == none) {
        return;
    }
    first = first == none ? middle : first;
    last = last == none ? middle : last;

    emitPair(p1, first, fragmentColor[0], positionV[1]);
    emitPair(p1, middle, fragmentColor[1], positionV[1]);
    emitPair(p2, middle, fragmentColor[2], positionV[2]);
    emitPair(p2, last, fragmentColor[3], positionV[2]);
    EndPrimitive();
}
