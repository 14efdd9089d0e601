#version 330 core

in vec4 fragmentColor;
in vec2 UV;

uniform sampler2D Texture0; // distance to the glyph's edge in alpha: 0.5 on the edge, more inside
uniform vec4 outlineColor;
uniform float outlineWidth; // in the units of the distance; 0 for none

out vec4 pixelColor;

void main()
{
    float dist = texture(Texture0, UV).a;
    float width = fwidth(dist);
    float alpha = smoothstep(0.5 - outlineWidth - width, 0.5 - outlineWidth + width, dist);
    float border = smoothstep(0.5 - width, 0.5 + width, dist);

    vec4 glyphColor = fragmentColor;
    if (outlineWidth > 0.001) {
        glyphColor = mix(outlineColor, fragmentColor, border);
    }
    pixelColor = vec4(glyphColor.rgb, glyphColor.a * alpha);
}
